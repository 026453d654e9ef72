#pragma once

#include "base/prompter.h"

#include <QPointer>
#include <QWidget>
#include <memory>

class QMessageBox;

namespace vkm {

// The prompter of the editor: message boxes, input boxes and file dialogs of Qt, all
// titled with the executable's name like every box of the program.
class GuiPrompter : public Prompter {
public:
    explicit GuiPrompter(QWidget* parent = nullptr);
    // The window the dialogs belong to (the main window once it exists).
    void setParentWidget(QWidget* parent) { m_parent = parent; }

    Answer showMessage(int number, int style, const QString& a1 = {}, const QString& a2 = {},
                       const QString& a3 = {}) override;
    Answer showText(const QString& text, int style) override;
    Answer askRetry(const QString& text) override;
    std::optional<QString> inputText(const QString& title, const QString& prompt,
                                     const QString& defaultText) override;
    QString openFileName(const FileDialogRequest& request) override;
    QString saveFileName(const FileDialogRequest& request) override;
    QString existingFolder(const QString& title, const QString& startDir) override;

    // The box of one style, not yet shown: icon, buttons and default button of the style;
    // kPlainBox gives a box without an icon and with OK only. nullptr for any other style.
    static std::unique_ptr<QMessageBox> createBox(const QString& text, int style, QWidget* parent = nullptr);

    // Filter text of a file dialog in Qt's form. The machine tools wrote filters as
    // "description|pattern|description|pattern" with patterns separated by ';'; a filter
    // without '|' is taken as Qt's form already.
    static QString qtFileFilter(const QString& filter);

private:
    QString startPath(const FileDialogRequest& request) const;
    QPointer<QWidget> m_parent;
};

} // namespace vkm
