#include "guiprompter.h"

#include "base/messages.h"

#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

namespace vkm {

namespace {

QMessageBox::Icon qtIcon(BoxIcon icon) {
    switch (icon) {
    case BoxIcon::Critical:
        return QMessageBox::Critical;
    case BoxIcon::Exclamation:
        return QMessageBox::Warning;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Information:
        return QMessageBox::Information;
    case BoxIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

struct Buttons {
    QMessageBox::StandardButtons all;
    QMessageBox::StandardButton first;
    QMessageBox::StandardButton second;
    QMessageBox::StandardButton escape;
};

Buttons qtButtons(BoxButtons buttons) {
    switch (buttons) {
    case BoxButtons::YesNo:
        return {QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, QMessageBox::No, QMessageBox::No};
    case BoxButtons::YesNoCancel:
        return {QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes, QMessageBox::No,
                QMessageBox::Cancel};
    case BoxButtons::OkCancel:
        return {QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok, QMessageBox::Cancel,
                QMessageBox::Cancel};
    case BoxButtons::Ok:
    case BoxButtons::None:
        break;
    }
    return {QMessageBox::Ok, QMessageBox::Ok, QMessageBox::NoButton, QMessageBox::Ok};
}

Answer toAnswer(int button) {
    switch (button) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return Answer::None;
    }
}

// "gsp file (*.gsp)|*.gsp" -> "gsp file (*.gsp)"; "Text|*.txt;*.log" -> "Text (*.txt *.log)".
QString qtFilterEntry(const QString& description, const QString& patterns) {
    const QString spaced = patterns.split(u';', Qt::SkipEmptyParts).join(u' ').trimmed();
    if (spaced.isEmpty() || description.contains(u'('))
        return description.trimmed();
    return description.trimmed() + QStringLiteral(" (") + spaced + u')';
}

} // namespace

GuiPrompter::GuiPrompter(QWidget* parent) : m_parent(parent) {}

std::unique_ptr<QMessageBox> GuiPrompter::createBox(const QString& text, int style, QWidget* parent) {
    const BoxStyle s = textBoxStyle(style);
    if (!s.valid)
        return nullptr;
    const Buttons b = qtButtons(s.buttons);
    auto box = std::make_unique<QMessageBox>(qtIcon(s.icon), messageBoxTitle(), text, b.all, parent);
    box->setDefaultButton(s.secondButtonDefault ? b.second : b.first);
    box->setEscapeButton(b.escape);
    return box;
}

Answer GuiPrompter::showMessage(int number, int style, const QString& a1, const QString& a2,
                                const QString& a3) {
    if (!boxStyle(style).valid)
        return Answer::None; // a numbered message in a style outside the ten shows nothing
    return showText(messageText(number, a1, a2, a3), style);
}

Answer GuiPrompter::showText(const QString& text, int style) {
    auto box = createBox(text, style, m_parent);
    if (!box)
        return Answer::None;
    const Answer a = toAnswer(box->exec());
    const BoxButtons buttons = textBoxStyle(style).buttons;
    return buttons == BoxButtons::Ok ? Answer::None : a;
}

Answer GuiPrompter::askRetry(const QString& text) {
    QMessageBox box(QMessageBox::Warning, messageBoxTitle(), text, QMessageBox::Retry | QMessageBox::Cancel,
                    m_parent);
    box.setDefaultButton(QMessageBox::Retry);
    box.setEscapeButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Retry ? Answer::Retry : Answer::Cancel;
}

std::optional<QString> GuiPrompter::inputText(const QString& title, const QString& prompt,
                                              const QString& defaultText) {
    bool ok = false;
    const QString t = title.isEmpty() ? messageBoxTitle() : title;
    const QString text = QInputDialog::getText(m_parent, t, prompt, QLineEdit::Normal, defaultText, &ok);
    if (!ok)
        return std::nullopt;
    return text;
}

QString GuiPrompter::startPath(const FileDialogRequest& request) const {
    if (request.proposedName.isEmpty())
        return request.startDir;
    if (request.startDir.isEmpty())
        return request.proposedName;
    return QDir(request.startDir).filePath(request.proposedName);
}

QString GuiPrompter::openFileName(const FileDialogRequest& request) {
    return QFileDialog::getOpenFileName(m_parent, request.title, startPath(request),
                                        qtFileFilter(request.filter));
}

QString GuiPrompter::saveFileName(const FileDialogRequest& request) {
    QFileDialog dialog(m_parent, request.title, request.startDir, qtFileFilter(request.filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(request.defaultSuffix);
    if (!request.proposedName.isEmpty())
        dialog.selectFile(request.proposedName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}

QString GuiPrompter::existingFolder(const QString& title, const QString& startDir) {
    return QFileDialog::getExistingDirectory(m_parent, title, startDir);
}

QString GuiPrompter::qtFileFilter(const QString& filter) {
    if (!filter.contains(u'|'))
        return filter;
    const QStringList parts = filter.split(u'|');
    QStringList entries;
    for (qsizetype i = 0; i < parts.size(); i += 2) {
        const QString patterns = i + 1 < parts.size() ? parts[i + 1] : QString();
        const QString entry = qtFilterEntry(parts[i], patterns);
        if (!entry.isEmpty())
            entries << entry;
    }
    return entries.join(QStringLiteral(";;"));
}

} // namespace vkm
