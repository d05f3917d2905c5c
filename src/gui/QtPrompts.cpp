#include "gui/QtPrompts.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QRegularExpression>
#include <QStringList>

#include "editor/Editor.h"
#include "gui/Text.h"
#include "gui/CustomPieceDialog.h"

namespace shd::gui {

QString QtFilter(const std::string& filter) {
    const QStringList parts = ToQt(filter).split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        // "*.*" means every file on Windows; here it would miss names without a dot.
        patterns.replaceInStrings(QRegularExpression(QStringLiteral("^\\*\\.\\*$")), QStringLiteral("*"));
        filters << parts[i] + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
    }
    return filters.join(QStringLiteral(";;"));
}

namespace {
QString Title() { return QString::fromLatin1(kProgramTitle); }

QMessageBox::StandardButton Ask(QWidget* parent, const std::string& text, QMessageBox::StandardButtons buttons) {
    QMessageBox box(QMessageBox::NoIcon, Title(), ToQt(text), buttons, parent);
    box.setTextFormat(Qt::PlainText);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

FileChoice Chosen(const QString& path) {
    if (path.isEmpty()) return {};
    return {PathBytes(path), ToBytes(QFileInfo(path).fileName())};
}

// Windows shows only the labels; the patterns are in them already.
constexpr QFileDialog::Options kDialogOptions = QFileDialog::HideNameFilterDetails;
}  // namespace

void QtPrompts::Message(const std::string& text) { Ask(parent_, text, QMessageBox::Ok); }

bool QtPrompts::AskYesNo(const std::string& text) {
    return Ask(parent_, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

Answer QtPrompts::AskYesNoCancel(const std::string& text) {
    switch (Ask(parent_, text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel)) {
    case QMessageBox::Yes: return Answer::Yes;
    case QMessageBox::No: return Answer::No;
    default: return Answer::Cancel;
    }
}

std::string QtPrompts::InputBox(const std::string& prompt, const std::string& defaultAnswer) {
    bool ok = false;
    const QString answer =
        QInputDialog::getText(parent_, Title(), ToQt(prompt), QLineEdit::Normal, ToQt(defaultAnswer), &ok);
    return ok ? ToBytes(answer) : std::string();
}

int QtPrompts::ChooseFromList(const std::string& prompt, const std::vector<std::string>& items) {
    QStringList names;
    for (const std::string& item : items) names << ToQt(item);
    bool ok = false;
    const QString chosen = QInputDialog::getItem(parent_, Title(), ToQt(prompt), names, 0, false, &ok);
    return ok ? static_cast<int>(names.indexOf(chosen)) : -1;
}

FileChoice QtPrompts::OpenFileDialog(const std::string& filter, const std::string& folder) {
    return Chosen(QFileDialog::getOpenFileName(parent_, QString(), PathText(folder), QtFilter(filter), nullptr,
                                               kDialogOptions));
}

FileChoice QtPrompts::SaveFileDialog(const std::string& filter, const std::string& folder,
                                     const std::string& extension) {
    QFileDialog dialog(parent_, QString(), PathText(folder), QtFilter(filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOptions(kDialogOptions);
    // Added to a name typed without one before the dialog asks about replacing a file.
    dialog.setDefaultSuffix(ToQt(extension).mid(1));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return Chosen(dialog.selectedFiles().constFirst());
}

bool QtPrompts::EditPicture(CustomPieceEdit& edit) {
    CustomPieceDialog dialog(edit, parent_);
    return dialog.Edit();
}

// ---- SyncingPrompts ----

void SyncingPrompts::Message(const std::string& text) {
    before_();
    inner_.Message(text);
}

bool SyncingPrompts::AskYesNo(const std::string& text) {
    before_();
    return inner_.AskYesNo(text);
}

Answer SyncingPrompts::AskYesNoCancel(const std::string& text) {
    before_();
    return inner_.AskYesNoCancel(text);
}

std::string SyncingPrompts::InputBox(const std::string& prompt, const std::string& defaultAnswer) {
    before_();
    return inner_.InputBox(prompt, defaultAnswer);
}

int SyncingPrompts::ChooseFromList(const std::string& prompt, const std::vector<std::string>& items) {
    before_();
    return inner_.ChooseFromList(prompt, items);
}

FileChoice SyncingPrompts::OpenFileDialog(const std::string& filter, const std::string& folder) {
    before_();
    return inner_.OpenFileDialog(filter, folder);
}

FileChoice SyncingPrompts::SaveFileDialog(const std::string& filter, const std::string& folder,
                                          const std::string& extension) {
    before_();
    return inner_.SaveFileDialog(filter, folder, extension);
}

bool SyncingPrompts::EditPicture(CustomPieceEdit& edit) {
    before_();
    return inner_.EditPicture(edit);
}

}  // namespace shd::gui
