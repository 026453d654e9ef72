#pragma once

#include "custom/customizeeasysheet.h"

#include <QWidget>
#include <memory>

class QAction;
class QTableView;
class QToolBar;

namespace vkm {

class CSelectKino;
class CustomizeEasyController;
class CustomizeEasyModel;
class FunctionChooserDialogs;

// The easy customisation window (fCustomizeEasy): one row per customisable terminal,
// inputs then outputs, with the function each has. A function is typed (its letters), or
// chosen with F2 in the window's own function dialogs, which list the customisation
// catalogues; "No function" clears it. Save writes the functions into the machine: the
// area is read again, the functions go into it, and it is written back. Only the
// functions change; every other property of the terminals goes back as the machine had it.
class fCustomizeEasy : public QWidget {
    Q_OBJECT
public:
    // file: the customisation data file the window is opened on (read from the machine,
    // or from a disk).
    fCustomizeEasy(CustomizeEasyController& controller, QString file, QWidget* parent = nullptr);
    ~fCustomizeEasy() override;

    // Caption, placement (pulled back inside the main window) and rows; called once the
    // window is in its frame.
    void Initialize();

    QString File() const { return m_file; }
    bool IsChanged() const { return m_sheet.IsChanged(); }
    CustomizeEasySheet& sheet() { return m_sheet; }
    QTableView* grid() const { return m_grid; }
    QToolBar* toolBar() const { return m_toolBar; }
    QAction* action(const QString& key) const;
    FunctionChooserDialogs* functionDialogs() const { return m_dialogs.get(); }

    qint16 GetCrntValue(int In_or_Out, const QString& digital) const;
    // The save to the machine: read the area again ("Reading data before save"), build the
    // transfer text, write it. True when it was written; the changed marks go then.
    bool SaveCustomData232C();
    QString GetFileNameToTransferCustom();
    // The question before closing with unsaved changes (message 143): true when the window
    // may close (Yes and a successful save, or No).
    bool SaveCheckCus();
    // Closing without asking: the changes are dropped.
    void discardChanges();
    // Closes the window with its frame (asking first when there are changes); false when it
    // stays open.
    bool closeWindow();

    // The commands, as the toolbar and the keys run them on the current row.
    void keySaveOp();
    void keyNoOp();
    void F2Op();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildToolBar();
    void buildGrid();
    void placeWindow();
    void SaveFormPosition();
    int currentRow() const;

    CustomizeEasyController& m_controller;
    QString m_file;
    CustomizeEasySheet m_sheet;
    std::unique_ptr<CSelectKino> m_kino;
    std::unique_ptr<FunctionChooserDialogs> m_dialogs;
    QToolBar* m_toolBar = nullptr;
    QTableView* m_grid = nullptr;
    CustomizeEasyModel* m_model = nullptr;
};

} // namespace vkm
