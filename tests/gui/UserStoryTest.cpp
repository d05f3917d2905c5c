// A whole session in the real window, as a user has it: a Tiltbash set built
// and saved, then a Shardles set with a custom shardle saved in every form the
// editor writes and opened back from each. Every prompt is scripted; the files
// are checked against what the writers make of the set that was saved.
#include <QAbstractItemView>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <sstream>

#include "GuiFixture.h"
#include "files/FileTestSupport.h"
#include "formats/Formats.h"
#include "gui/Text.h"
#include "gui/frmCusShd.h"

namespace shd::gui::test {
namespace {

std::string FileBytes(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot read " << path.toStdString();
        return {};
    }
    const QByteArray bytes = file.readAll();
    return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

// What a form hands back of `saved`, as the window holds it once opened:
// level 1 current, its piece counts recounted for the grid.
LevelSet AsOpened(LevelSet carried) {
    carried.CurrentLevel = 1;
    RecountCurrentLevel(carried);
    return carried;
}

// The calculator forms carry the level image: no records, and the debugger
// and match-locks options come back as a new set has them.
LevelSet ImageCarried(const LevelSet& saved) {
    LevelSet carried = shd::test::Carried(saved, false);
    carried.UseShardlesDebugger = true;
    carried.MatchLocksToBlocks = true;
    return carried;
}

// Names the fields in which two sets differ, for a readable failure.
std::string Differences(const LevelSet& got, const LevelSet& want) {
    std::ostringstream out;
    auto field = [&](const std::string& name, const auto& a, const auto& b) {
        if (!(a == b)) out << "\n  " << name << ": " << +a << " instead of " << +b;
    };
    auto text = [&](const char* name, const Bytes& a, const Bytes& b) {
        if (a != b) out << "\n  " << name << ": \"" << a << "\" instead of \"" << b << "\"";
    };
    field("Kind", static_cast<int>(got.Kind), static_cast<int>(want.Kind));
    text("Title", got.Title, want.Title);
    text("BonusClock", got.BonusClock, want.BonusClock);
    text("ExtraLifePoints", got.ExtraLifePoints, want.ExtraLifePoints);
    field("ArrowBlocksBreakable", got.ArrowBlocksBreakable, want.ArrowBlocksBreakable);
    field("UseWrapAround", got.UseWrapAround, want.UseWrapAround);
    field("UseCustomShardles", got.UseCustomShardles, want.UseCustomShardles);
    field("UseShardlesDebugger", got.UseShardlesDebugger, want.UseShardlesDebugger);
    field("MatchLocksToBlocks", got.MatchLocksToBlocks, want.MatchLocksToBlocks);
    field("CurrentLevel", got.CurrentLevel, want.CurrentLevel);
    if (got.CustomShardlePicture != want.CustomShardlePicture) out << "\n  CustomShardlePicture";
    if (got.CustomChangerPicture != want.CustomChangerPicture) out << "\n  CustomChangerPicture";
    field("LevelCount", got.LevelCount(), want.LevelCount());
    for (int level = 1; level <= std::min(got.LevelCount(), want.LevelCount()); ++level) {
        const std::string at = "level " + std::to_string(level) + " ";
        const LevelLayout& a = got.Layout(level);
        const LevelLayout& b = want.Layout(level);
        if (a.Cells != b.Cells) out << "\n  " << at << "Cells";
        field(at + "BlockCount", a.BlockCount, b.BlockCount);
        field(at + "LastBlockCount", a.LastBlockCount, b.LastBlockCount);
        field(at + "BallX", a.BallX, b.BallX);
        field(at + "BallY", a.BallY, b.BallY);
        if (!(got.Record(level) == want.Record(level))) out << "\n  " << at << "record";
    }
    return out.str();
}

#define EXPECT_SAME_SET(got, want) EXPECT_TRUE((got) == (want)) << Differences((got), (want))

class UserStory : public WindowTest {
protected:
    QString FilePath(const char* name) const { return files.filePath(QString::fromLatin1(name)); }
    std::string PathOf(const char* name) const { return PathBytes(FilePath(name)); }

    void Paint(int code, std::initializer_list<int> cells) {
        Choose(code);
        ASSERT_EQ(ui().SelectedBlock, code);
        for (int cell : cells) ClickCell(cell);
    }

    void Type(const char* box, const char* text) {
        QLineEdit* edit = Find<QLineEdit>(box);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QString::fromLatin1(text));
    }

    void TypeInCombo(const char* box, const char* text) {
        QLineEdit* edit = Find<QComboBox>(box)->lineEdit();
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QString::fromLatin1(text));
    }

    // Picks an entry of the level list with the mouse, as the user does.
    void ChooseLevel(int entry) {
        auto* levels = Find<QComboBox>("cmbLevels");
        levels->showPopup();
        QAbstractItemView* view = levels->view();
        const QRect item = view->visualRect(view->model()->index(entry, 0));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, item.center());
    }

    // Scripts a save dialog answered with `name`, keeping the set as it is
    // written, then the confirmation.
    void ExpectSave(const char* filter, const char* name, LevelSet& saved, const char* confirmation) {
        prompts.ExpectSave(filter, PathOf(name)).Then([this, &saved] { saved = set(); });
        prompts.ExpectMessage(confirmation);
    }

    // The file on disk is what the writer makes of the set at the moment of saving.
    void ExpectWrittenBy(FormatId id, const LevelSet& saved, const char* name) {
        const WriteResult expected = GetFormat(id).write(saved, name);
        ASSERT_TRUE(expected.ok) << expected.message;
        EXPECT_TRUE(FileBytes(FilePath(name)) == expected.bytes) << name << " differs from the writer's bytes";
    }

    void ExpectShardlesStoryShown() {
        ASSERT_EQ(window->cellCount(), 80);
        EXPECT_EQ(Find<QComboBox>("cmbLevels")->count(), 2);
        EXPECT_EQ(Find<QComboBox>("cmbLevels")->currentText(), QStringLiteral("Level 1"));
        EXPECT_EQ(Find<QLabel>("lblLevel")->text(), QStringLiteral("Number of Levels: 2"));
        EXPECT_EQ(Find<QLineEdit>("txtTitle")->text(), QStringLiteral("Shard story"));
        EXPECT_EQ(Find<QComboBox>("cmbBonus")->currentText(), QStringLiteral("60"));
        EXPECT_EQ(Find<QComboBox>("cmbExLife")->currentText(), QStringLiteral("300"));
        EXPECT_EQ(Find<QLineEdit>("txtBallx")->text(), QStringLiteral("40"));
        EXPECT_EQ(Find<QLineEdit>("txtBally")->text(), QStringLiteral("30"));
        EXPECT_TRUE(Action("mnuWrap")->isChecked());
        EXPECT_TRUE(Action("mnuCus")->isChecked());
        for (int cell = 0; cell < 8; ++cell) EXPECT_TRUE(CellShows(cell, 1)) << cell;
        EXPECT_TRUE(CellShows(12, 6));
        EXPECT_TRUE(CellShows(20, 2));
        EXPECT_TRUE(CellShows(79, 0));  // level 2's last block is not on show
    }

    QTemporaryDir files;
};

TEST_F(UserStory, ATiltbashSetThenAShardlesSetSavedInEveryFormAndOpenedBackFromEach) {
    ASSERT_TRUE(files.isValid());

    // ---- A Tiltbash set of two levels, saved as a My File ----
    Trigger("mnuNewTil");
    ASSERT_EQ(window->cellCount(), 64);
    Type("txtTitle", "Tilt story");
    Paint(1, {0, 1, 2});
    Paint(8, {10});
    Paint(15, {63});
    EXPECT_TRUE(CellShows(10, 8));

    Click(Find("cmdAddLev"));
    EXPECT_EQ(Find<QLabel>("lblLevel")->text(), QStringLiteral("Number of Levels: 2"));
    ChooseLevel(1);
    ASSERT_EQ(set().CurrentLevel, 2);
    EXPECT_EQ(Find<QComboBox>("cmbLevels")->currentText(), QStringLiteral("Level 2"));
    for (int cell = 0; cell < 64; ++cell) ASSERT_TRUE(CellShows(cell, 0)) << cell;  // a new level is empty
    Paint(3, {5, 6});

    LevelSet tiltSaved;
    ExpectSave("My File (*.rxs)|*.rsx", "tilt.rsx", tiltSaved, "Saved Succesfully!");
    Trigger("mnuSaveMyFile");
    ASSERT_TRUE(prompts.done());
    ExpectWrittenBy(FormatId::MyFile, tiltSaved, "tilt.rsx");
    {
        // Counted before writing: 1 + 1 + 1 + 2 (code 8) + 0 (code 15), and 1 + 1.
        const std::vector<std::string> lines = shd::test::SplitCrLf(FileBytes(FilePath("tilt.rsx")));
        ASSERT_EQ(lines.size(), 8u);
        EXPECT_EQ(lines[0], "QUARTLEV");
        EXPECT_EQ(lines[1], "Tilt story");
        EXPECT_EQ(lines[2], "False");
        EXPECT_EQ(lines[3], " 2 ");
        EXPECT_EQ(lines[4].substr(0, 6), "1,1,1,");
        EXPECT_EQ(lines[5], " 5 ");
        EXPECT_EQ(lines[7], " 2 ");
    }
    // A save ends on level 1, drawn.
    EXPECT_EQ(set().CurrentLevel, 1);
    EXPECT_EQ(Find<QComboBox>("cmbLevels")->currentText(), QStringLiteral("Level 1"));
    EXPECT_TRUE(CellShows(0, 1));
    EXPECT_TRUE(CellShows(5, 0));
    EXPECT_EQ(window->editor().lastFolder(), PathBytes(files.path()) + "/");

    // ---- A Shardles set: settings, blocks, a last block, a spotted shardle ----
    Trigger("mnuNewShd");
    ASSERT_EQ(window->cellCount(), 80);
    EXPECT_EQ(Find<QLineEdit>("txtTitle")->text(), QStringLiteral("Please Add a Title"));
    Type("txtTitle", "Shard story");
    TypeInCombo("cmbBonus", "60");
    TypeInCombo("cmbExLife", "300");
    Trigger("mnuWrap");
    Trigger("mnuMatch");  // off: codes 11 and 12 weigh one block each
    EXPECT_TRUE(set().UseWrapAround);
    EXPECT_FALSE(set().MatchLocksToBlocks);

    Paint(1, {0, 1, 2, 3, 4, 5, 6, 7});
    Paint(6, {12});
    Choose(2);
    prompts.ExpectYesNo(kSpottedQuestion, true).Then([&] { EXPECT_TRUE(CellShows(20, 2)); });
    ClickCell(20);
    ASSERT_TRUE(prompts.done());
    EXPECT_TRUE(set().Record(1).SpottedUnused);
    EXPECT_TRUE(Action("mnuSpot")->isChecked());
    Type("txtBallx", "40");
    Type("txtBally", "30");
    EXPECT_EQ(set().Layout(1).BallX, 40);
    EXPECT_EQ(set().Layout(1).BallY, 30);

    // A second level with its own last block.
    Click(Find("cmdAddLev"));
    ChooseLevel(1);
    ASSERT_EQ(set().CurrentLevel, 2);
    EXPECT_EQ(Find<QLineEdit>("txtBallx")->text(), QStringLiteral("0"));
    Paint(12, {70, 71});
    Paint(6, {79});
    Type("txtBallx", "7");
    Type("txtBally", "3");
    // Two things only the My File keeps: an unused kind and a special unused block.
    Trigger("mnuCenter");
    EXPECT_TRUE(set().Record(2).CenterLineUnused);
    prompts.ExpectInput("How many other blocks are not used? Don't count blocks affected by the Flags.", "1");
    Trigger("mnuSpecial");
    ASSERT_TRUE(prompts.done());
    EXPECT_EQ(set().Record(2).SpecialUnusedCount, 1);

    // ---- The custom shardle, drawn in the real dialog ----
    std::vector<int> drawn;  // the default shardle with cell 1 cleared and cells 15 and 16 set
    for (int n : {2, 3, 4, 5, 6, 7, 10, 15, 16, 18, 19, 28, 29, 38, 39, 48, 49, 51, 52, 53, 54, 55, 56, 57, 60})
        drawn.push_back(n);
    prompts.ExpectPicture([&](CustomPieceEdit& edit) {
        EXPECT_EQ(edit.kind(), PictureKind::Normal);
        frmCusShd dialog(edit, window->metrics(), window.get());
        QTimer::singleShot(0, &dialog, [&] {
            EXPECT_TRUE(dialog.isVisible());
            QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdDefault")), Qt::LeftButton);
            for (int n : {1, 15, 16}) QTest::mouseClick(dialog.cell(n), Qt::LeftButton);
            EXPECT_EQ(dialog.cell(1)->text(), QStringLiteral("0"));
            EXPECT_EQ(dialog.cell(15)->text(), QStringLiteral("1"));
            QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
            if (dialog.isVisible()) {
                ADD_FAILURE() << "OK left the dialog open";
                dialog.reject();
            }
        });
        return dialog.LoadUp();
    });
    Trigger("mnuCreateNormShd");
    ASSERT_TRUE(prompts.done());
    EXPECT_TRUE(set().UseCustomShardles);
    EXPECT_TRUE(Action("mnuCus")->isChecked());
    PiecePicture picture;
    for (int n : drawn) picture.at(n) = 1;
    EXPECT_EQ(set().CustomShardlePicture, picture);
    EXPECT_EQ(set().CustomChangerPicture, PiecePicture{});

    // ---- Saved in the four forms ----
    // Level 1: eight blocks, the spotted shardle unused; level 2: two code-12
    // blocks less the special unused one.
    LevelSet mySaved, listSaved, sourceSaved, codeSaved;
    ExpectSave("My File (*.rxs)|*.rsx", "shard.rsx", mySaved, "Saved Succesfully!");
    Trigger("mnuSaveMyFile");
    ASSERT_TRUE(prompts.done());
    ExpectWrittenBy(FormatId::MyFile, mySaved, "shard.rsx");
    const std::string myFile = FileBytes(FilePath("shard.rsx"));
    EXPECT_NE(myFile.find("\r\n8,1,40,30\r\n#FALSE#,0,0,0,0\r\n"), std::string::npos);
    EXPECT_NE(myFile.find("\r\n1,1,7,3\r\n#TRUE#,0,0,0,1\r\n"), std::string::npos);
    EXPECT_EQ(set().CurrentLevel, 1);
    EXPECT_EQ(Find<QLineEdit>("txtBallx")->text(), QStringLiteral("40"));

    ExpectSave("TI-83 List|*.83l", "shard.83l", listSaved, "Saved Succesfully!");
    Trigger("mnuSaveList");
    ASSERT_TRUE(prompts.done());
    ExpectWrittenBy(FormatId::List, listSaved, "shard.83l");
    EXPECT_EQ(shd::test::SplitCrLf(FileBytes(FilePath("shard.83l"))).at(1), "//LQRVLE");

    ExpectSave("TI-83 Source Files(*.z80,*.asm)|*.z80;*.asm", "shard.z80", sourceSaved, "Saved Succesfully");
    Trigger("mnuSaveSource");
    ASSERT_TRUE(prompts.done());
    ExpectWrittenBy(FormatId::Source, sourceSaved, "shard.z80");
    const std::string source = FileBytes(FilePath("shard.z80"));
    EXPECT_NE(source.find("\r\n        .db             \"Shard story\",$00\r\n"), std::string::npos);
    EXPECT_NE(source.find("\r\n        .db             40,30,8,1\r\n"), std::string::npos);
    EXPECT_NE(source.find("\r\nlevel2:\r\n"), std::string::npos);
    EXPECT_EQ(set().CurrentLevel, 1);

    ExpectSave("TI-83 Program File|*.83p", "SHARD.83p", codeSaved, "Succesfully compiled!");
    Trigger("mnuSaveCode");
    ASSERT_TRUE(prompts.done());
    ExpectWrittenBy(FormatId::Program, codeSaved, "SHARD.83p");
    const std::string program = FileBytes(FilePath("SHARD.83p"));
    ASSERT_GT(program.size(), 74u);
    EXPECT_EQ(program.substr(60, 8), std::string("SHARD\0\0\0", 8));
    EXPECT_EQ(program.substr(72, 6), "Shd1KZ");

    // Every save wrote the same set; only the source leaves the counts as they stood.
    for (const LevelSet* saved : {&listSaved, &sourceSaved, &codeSaved})
        EXPECT_SAME_SET(shd::test::Carried(*saved, true), shd::test::Carried(mySaved, true));
    EXPECT_EQ(mySaved.Layout(1).BlockCount, 8);
    EXPECT_EQ(mySaved.Layout(2).BlockCount, 1);
    EXPECT_EQ(mySaved.Layout(2).LastBlockCount, 1);
    EXPECT_TRUE(mySaved.Record(1).SpottedUnused);

    // ---- Opened back from each form, each time over a fresh Tiltbash set ----
    // None of the forms keeps the spotted flag, so the debugger asks again each time.
    struct Reopen {
        const char* action;
        const char* filter;
        const char* file;
        bool confirms;  // reading source confirms nothing
        LevelSet expected;
    };
    const Reopen reopens[] = {
        {"mnuOpenMyFile", "My Files (*.rsx)|*.rsx", "shard.rsx", true, shd::test::Carried(mySaved, true)},
        {"mnuOpenList", "TI-83 List File|*.83l", "shard.83l", true, shd::test::Carried(listSaved, false)},
        {"mnuOpenSource", "TI-83 Source Files (*.z80, *.asm)|*.z80;*.asm", "shard.z80", false,
         ImageCarried(sourceSaved)},
        {"mnuOpenCode", "TI-83 Program files|*.83p", "SHARD.83p", true, ImageCarried(codeSaved)},
    };
    for (const Reopen& reopen : reopens) {
        SCOPED_TRACE(reopen.action);
        Trigger("mnuNewTil");
        prompts.ExpectOpen(reopen.filter, PathOf(reopen.file));
        if (reopen.confirms) prompts.ExpectMessage("Opened Succesfully");
        prompts.ExpectYesNo(kSpottedQuestion, false);
        Trigger(reopen.action);
        ASSERT_TRUE(prompts.done());
        EXPECT_SAME_SET(set(), AsOpened(reopen.expected));
        EXPECT_EQ(set().CustomShardlePicture, picture);
        ExpectShardlesStoryShown();
    }
    // Only the My File keeps the record fields and the match-locks option.
    Trigger("mnuNewTil");
    prompts.ExpectOpen("My Files (*.rsx)|*.rsx", PathOf("shard.rsx")).ExpectMessage("Opened Succesfully");
    prompts.ExpectYesNo(kSpottedQuestion, false);
    Trigger("mnuOpenMyFile");
    EXPECT_FALSE(set().MatchLocksToBlocks);
    EXPECT_TRUE(set().Record(2).CenterLineUnused);
    EXPECT_EQ(set().Record(2).SpecialUnusedCount, 1);

    Trigger("mnuNewShd");
    // And the Tiltbash set of the start, with no debugger to ask anything.
    prompts.ExpectOpen("My Files (*.rsx)|*.rsx", PathOf("tilt.rsx"));
    prompts.ExpectMessage("Opened Succesfully");
    Trigger("mnuOpenMyFile");
    ASSERT_TRUE(prompts.done());
    EXPECT_SAME_SET(set(), AsOpened(shd::test::Carried(tiltSaved, true)));
    ASSERT_EQ(window->cellCount(), 64);
    EXPECT_FALSE(Find("txtBallx")->isVisibleTo(window.get()));
    EXPECT_EQ(Find<QLineEdit>("txtTitle")->text(), QStringLiteral("Tilt story"));
    EXPECT_TRUE(CellShows(10, 8));
    EXPECT_TRUE(CellShows(63, 15));
}

}  // namespace
}  // namespace shd::gui::test
