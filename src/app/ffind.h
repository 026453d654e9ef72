#pragma once

#include "sheet/sheetcontext.h"

#include <QDialog>

class QGroupBox;
class QLabel;
class QPushButton;

namespace vkm {

class FunctionFinder;
class StepSheetEditor;

// The find window of one step editor: a function to find (and one to replace it with),
// each chosen with the browse buttons from the selection dialog of outputs or inputs;
// Next, Replace, Replace all and Cancel. It stays open between searches and only shows
// the editor's finder; the finder does the work.
class fFind : public QDialog {
    Q_OBJECT
public:
    // chooser: the selection dialog (side 1 input, 2 output) the browse buttons open.
    fFind(StepSheetEditor& editor, FunctionChooser chooser, QWidget* parent = nullptr);

    // The editor opens the window on its current cell (first opening: fresh values).
    void open();
    // Shows the finder's values and what can be pressed.
    void refresh();

    // The buttons, by index: 1 Next, 2 Cancel, 3 Replace, 4 Replace all.
    QPushButton* BTN(int index) const;
    // Browse buttons: value 1 find, 2 replacement; side 1 input, 2 output.
    QPushButton* btnRef(int value, int side) const;
    QString lblDigi(int value) const;
    QString lblCategory(int value) const;

Q_SIGNALS:
    // Replace all replaced this many functions and the window closed.
    void replacedAll(int count);

protected:
    // Hidden by Cancel, Escape or the close button: the window is unloaded.
    void hideEvent(QHideEvent* event) override;

private:
    QGroupBox* makeValueBox(int value, const QString& title);
    void browse(int value, int side);
    void nextOp();
    void replaceOp();
    void replaceAllOp();

    StepSheetEditor& m_editor;
    FunctionFinder& m_finder;
    FunctionChooser m_chooser;
    QLabel* m_digi[2] = {};
    QLabel* m_category[2] = {};
    QPushButton* m_browse[2][2] = {};
    QPushButton* m_buttons[4] = {};
    QGroupBox* m_replaceBox = nullptr;
};

} // namespace vkm
