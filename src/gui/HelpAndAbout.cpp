#include "gui/HelpAndAbout.h"

#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <cstdio>
#include <cstring>

#include "editor/Editor.h"

namespace shd::gui {

namespace {
constexpr const char* kUsage =
    "Usage: shardles-editor [FILE]\n"
    "       shardles-editor --version | --help\n"
    "\n"
    "Opens the Shardles/Tiltbash level editor with a new Shardles set, or with\n"
    "FILE: a level set in any form the editor reads, told by its extension\n"
    "(.rsx the editor's own file, .83l TI-83 list, .83p TI-83 program, .z80 or\n"
    ".asm Z80 assembly source, .json JSON).\n"
    "\n"
    "The editor keeps the folder of the last file used in info.ini beside the\n"
    "program when it runs from its build folder and may write there, and\n"
    "otherwise in the user's configuration folder\n"
    "(~/.config/shardles-editor/info.ini).\n"
    "\n"
    "Help -> Contents (F1) shows the user guide; shardles-convert(1) converts,\n"
    "checks and sends sets without a window. Qt's own options, such as\n"
    "-platform or -style, are taken as well.\n";
}  // namespace

bool AnswerInfoOption(int argc, char** argv, int& status) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--") == 0) break;
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
            std::fputs(kUsage, stdout);
            status = 0;
            return true;
        }
        if (std::strcmp(argv[i], "--version") == 0) {
            std::puts("shardles-editor " SHD_VERSION);
            status = 0;
            return true;
        }
    }
    return false;
}

void ShowUserGuide(QWidget* parent, const QString& path) {
    const QString name = QStringLiteral("userGuide");
    auto* viewer = parent->findChild<QDialog*>(name, Qt::FindDirectChildrenOnly);
    if (!viewer) {
        viewer = new QDialog(parent, Qt::Window);
        viewer->setObjectName(name);
        viewer->setWindowTitle(QString::fromLatin1(kProgramTitle) + QStringLiteral(" - User Guide"));
        auto* text = new QTextBrowser(viewer);
        text->setOpenExternalLinks(true);
        // The guide's pictures are in docs/ beside it.
        text->setSearchPaths({QFileInfo(path).absolutePath()});
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) text->setMarkdown(QString::fromUtf8(file.readAll()));
        else text->setPlainText(QStringLiteral("The user guide should be in %1, but it is not there.").arg(path));
        auto* layout = new QVBoxLayout(viewer);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(text);
        viewer->resize(720, 640);
    }
    viewer->show();
    viewer->raise();
    viewer->activateWindow();
}

}  // namespace shd::gui
