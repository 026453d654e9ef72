#pragma once

#include "sheet/pulsepair.h"
#include "sheet/sheetcontext.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vkm {

class PulseCanvas;
class Settings;
class StepSheetEditor;

// The pulse window ("Pulse output"): the pulse pair of the editor's current row shown as
// one pulse (function, pulse logic, delay kind, start delay and length) over its symbol,
// edited and written back into the row with Decide. A tool window that follows the
// editor's current cell.
class fPulse : public QDialog {
    Q_OBJECT
public:
    // chooser: the output selection dialog F2 opens in the function box.
    fPulse(StepSheetEditor& editor, Settings* settings, FunctionChooser chooser, QWidget* parent = nullptr);

    bool IsLoaded() const { return isVisible(); }
    // Fills the window from the current row's pulse, or clears it.
    void PasteValue();
    void ResetFace();
    // "Line " and the row.
    void ShowLine(int row);
    // What the window shows now.
    PulseValues values() const;

    // Decide: the values checked and written into the current row.
    void decideOp();

    QLineEdit* txtKino() const { return m_kino; }
    QLineEdit* txtDelay(int index) const { return index == 1 ? m_delay1 : m_delay2; }
    QComboBox* cboLogic() const { return m_logic; }
    QComboBox* cboDelayKind() const { return m_kind; }
    QString lblCategory() const;
    QString lineText() const;
    QPushButton* BTN(int index) const { return index == 1 ? m_decide : m_close; }
    QWidget* pic() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void buildFace();
    void placeDelays();
    void focusField(PulseField field);
    bool checkKinoBox();
    bool checkDelay(int index);
    void chooseFunction();
    void placeWindow();
    QWidget* innerArea() const;

    StepSheetEditor& m_editor;
    Settings* m_settings;
    FunctionChooser m_chooser;
    PulseCanvas* m_canvas = nullptr;
    QLineEdit* m_kino = nullptr;
    QLabel* m_category = nullptr;
    QComboBox* m_logic = nullptr;
    QComboBox* m_kind = nullptr;
    QWidget* m_delayBox[2] = {};
    QLineEdit* m_delay1 = nullptr;
    QLineEdit* m_delay2 = nullptr;
    QLabel* m_line = nullptr;
    QPushButton* m_decide = nullptr;
    QPushButton* m_close = nullptr;
    QString m_savedText; // the text of the box that last got the focus (Escape restores it)
    bool m_skipSave = false;
    bool m_validating = false;
    // A text found wrong when its box was left, so that Decide does not say it twice.
    QLineEdit* m_failedBox = nullptr;
    QString m_failedText;
};

} // namespace vkm
