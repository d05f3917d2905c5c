#include "gui/LevelFields.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "gui/KeyCodes.h"
#include "gui/Text.h"

namespace shd::gui {

namespace {
QLabel* MakeLabel(QWidget* parent, const char* name, const char* text) {
    auto* label = new QLabel(QString::fromLatin1(text), parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

QPushButton* MakeButton(QWidget* parent, const char* name, const char* text) {
    auto* button = new QPushButton(QString::fromLatin1(text), parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

QComboBox* MakeCombo(QWidget* parent, const char* name, const QStringList& items) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QString::fromLatin1(name));
    // Editable by giving it its line edit: setEditable(true) would also build
    // the drop-down list at once, which the combo box otherwise builds when
    // it first drops down.
    combo->setLineEdit(new QLineEdit(combo));
    // Typed text is the setting itself: it is not completed to an entry it
    // starts ("6" stays 6, not 60), and it never becomes a list entry.
    combo->setCompleter(nullptr);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->addItems(items);
    return combo;
}

QLineEdit* MakeTextBox(QWidget* parent, const char* name, const char* text) {
    auto* box = new QLineEdit(QString::fromLatin1(text), parent);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

// A caption over its control, as one column of the window.
QVBoxLayout* Captioned(QLabel* label, QWidget* control) {
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(label);
    column->addWidget(control);
    return column;
}

// Two captioned controls, one above the other, at the top of a side of the grid.
QVBoxLayout* Side(QLabel* first, QWidget* firstBox, QLabel* second, QWidget* secondBox) {
    auto* column = new QVBoxLayout;
    column->addLayout(Captioned(first, firstBox));
    column->addSpacing(16);
    column->addLayout(Captioned(second, secondBox));
    column->addStretch();
    return column;
}

// Rewrites a box only when the state says something else, so typing is left alone.
void ShowText(QLineEdit* box, const QString& text) {
    if (box->text() == text) return;
    box->setText(text);
    box->setCursorPosition(static_cast<int>(text.size()));
}

void ShowText(QComboBox* combo, const QString& text) {
    if (combo->currentText() == text) return;
    combo->setEditText(text);
    if (QLineEdit* edit = combo->lineEdit()) edit->setCursorPosition(static_cast<int>(text.size()));
}
}  // namespace

LevelFields::LevelFields(QWidget* parent, Editor& editor, Runner run)
    : QObject(parent), editor_(editor), run_(std::move(run)) {
    titleLabel_ = MakeLabel(parent, "titleLabel", "&Level Name");
    titleBox_ = MakeTextBox(parent, "titleBox", "Please Add a title");
    titleLabel_->setBuddy(titleBox_);
    levelCount_ = MakeLabel(parent, "levelCount", "Number of Levels: 255");
    addLevel_ = MakeButton(parent, "addLevel", "Add a Level");
    removeLevel_ = MakeButton(parent, "removeLevel", "Lose a  Level");
    levelListLabel_ = MakeLabel(parent, "levelListLabel", "Current Level/Change Level");
    levelList_ = MakeCombo(parent, "levelList", {QStringLiteral("Level 1")});
    bonusClockLabel_ = MakeLabel(parent, "bonusClockLabel", "&Bonus Clock start number");
    bonusClock_ = MakeCombo(parent, "bonusClock",
                            {QStringLiteral("30"), QStringLiteral("60"), QStringLiteral("90"), QStringLiteral("120")});
    bonusClockLabel_->setBuddy(bonusClock_);
    extraLifeLabel_ = MakeLabel(parent, "extraLifeLabel", "&Extra Life Point Number:");
    QStringList points;
    for (int p = 100; p <= 800; p += 100) points << QString::number(p);
    extraLife_ = MakeCombo(parent, "extraLife", points);
    extraLifeLabel_->setBuddy(extraLife_);
    ballAcrossLabel_ = MakeLabel(parent, "ballAcrossLabel", "Ball starts to the &right:");
    ballAcross_ = MakeTextBox(parent, "ballAcross", "");
    ballAcrossLabel_->setBuddy(ballAcross_);
    ballDownLabel_ = MakeLabel(parent, "ballDownLabel", "Ball starts &down:");
    ballDown_ = MakeTextBox(parent, "ballDown", "");
    ballDownLabel_->setBuddy(ballDown_);

    // The level count's label keeps the width of its widest text.
    levelCount_->setMinimumWidth(levelCount_->sizeHint().width());
    auto* levelButtons = new QHBoxLayout;
    levelButtons->setSpacing(0);
    levelButtons->addWidget(addLevel_);
    levelButtons->addWidget(removeLevel_);
    auto* levelCount = new QVBoxLayout;
    levelCount->setSpacing(2);
    levelCount->addWidget(levelCount_);
    levelCount->addLayout(levelButtons);
    setRow_ = new QHBoxLayout;
    setRow_->addStretch();
    setRow_->addLayout(Captioned(titleLabel_, titleBox_));
    setRow_->addSpacing(24);
    setRow_->addLayout(levelCount);
    setRow_->addSpacing(24);
    setRow_->addLayout(Captioned(levelListLabel_, levelList_));
    setRow_->addStretch();
    for (auto* top : {titleLabel_, levelCount_, levelListLabel_}) top->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    settingsColumn_ = Side(bonusClockLabel_, bonusClock_, extraLifeLabel_, extraLife_);
    ballColumn_ = Side(ballAcrossLabel_, ballAcross_, ballDownLabel_, ballDown_);

    connect(addLevel_, &QPushButton::clicked, this, [this] { run_([&] { editor_.AddLevel(); }, false); });
    connect(removeLevel_, &QPushButton::clicked, this, [this] { run_([&] { editor_.RemoveLevel(); }, false); });
    connect(levelList_, &QComboBox::activated, this,
            [this](int index) { run_([&] { editor_.GoToLevel(index + 1); }, false); });
    connect(titleBox_, &QLineEdit::textEdited, this,
            [this](const QString& text) { run_([&] { editor_.SetTitle(ToBytes(text)); }, false); });
    connect(bonusClock_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (!showing_) run_([&] { editor_.SetBonusClock(ToBytes(text)); }, false);
    });
    connect(extraLife_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (!showing_) run_([&] { editor_.SetExtraLifePoints(ToBytes(text)); }, false);
    });
    for (QLineEdit* box : {ballAcross_, ballDown_})
        connect(box, &QLineEdit::textChanged, this, [this, box](const QString& text) {
            const Axis axis = box == ballAcross_ ? Axis::Across : Axis::Down;
            if (!showing_) run_([&] { editor_.TypeBallStart(axis, ToBytes(text)); }, false);
        });
    for (QLineEdit* box : {titleBox_, ballAcross_, ballDown_}) box->installEventFilter(this);
}

void LevelFields::Show() {
    const bool wasShowing = showing_;
    showing_ = true;
    const WindowState& ui = editor_.ui();
    const LevelSet& set = editor_.set();
    levelCount_->setText(ToQt(ui.levelCountText));
    ShowText(titleBox_, ToQt(set.Title));
    ShowText(ballAcross_, ToQt(ui.ballXText));
    ShowText(ballDown_, ToQt(ui.ballYText));

    QStringList entries;
    for (const std::string& entry : ui.levelEntries) entries << ToQt(entry);
    bool same = levelList_->count() == entries.size();
    for (int i = 0; same && i < levelList_->count(); ++i) same = levelList_->itemText(i) == entries[i];
    if (!same) {
        levelList_->clear();
        levelList_->addItems(entries);
    }
    ShowText(levelList_, ToQt(ui.levelText));
    ShowText(bonusClock_, ToQt(set.BonusClock));
    ShowText(extraLife_, ToQt(set.ExtraLifePoints));

    for (QWidget* w : std::initializer_list<QWidget*>{bonusClockLabel_, bonusClock_, extraLifeLabel_, extraLife_,
                                                      ballAcrossLabel_, ballAcross_, ballDownLabel_, ballDown_})
        w->setVisible(ui.shardlesControlsVisible);
    showing_ = wasShowing;
}

bool LevelFields::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyRelease) {
        auto* key = static_cast<QKeyEvent*>(event);
        // One key-up per key, however long it was held.
        if (!key->isAutoRepeat()) {
            const Key released = KeyOf(*key);
            if (watched == titleBox_) {
                run_([&] { editor_.CheckTitle(released); }, false);
            } else if (watched == ballAcross_) {
                const std::string text = ToBytes(ballAcross_->text());
                run_([&] { editor_.SetBallStart(Axis::Across, text, released); }, false);
            } else if (watched == ballDown_) {
                const std::string text = ToBytes(ballDown_->text());
                run_([&] { editor_.SetBallStart(Axis::Down, text, released); }, false);
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace shd::gui
