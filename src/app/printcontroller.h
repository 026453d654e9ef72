#pragma once

#include <QObject>
#include <functional>

class QWidget;

namespace vkm {

struct AppContext;
class Documents;
class fPrint;

// The print command of the two step editors (PrintOp): the user program is checked and
// taken from the grid as a save would take it, the comparison program as it was opened;
// the print dialog prints or saves it, and a workbook the user asked to see is opened
// with the desktop's program for it.
class PrintController : public QObject {
    Q_OBJECT
public:
    PrintController(AppContext& context, Documents& documents, QWidget* dialogParent = nullptr);

    // The Print button of the editor usrcmp.
    void PrintOp(int usrcmp);

    // Tests replace how the dialog is shown (modal) and how a file is opened.
    void setDialogRunner(std::function<void(fPrint&)> runner) { m_runner = std::move(runner); }
    void setOpener(std::function<bool(const QString&)> opener) { m_opener = std::move(opener); }

private:
    AppContext& m_context;
    Documents& m_documents;
    QWidget* m_parent;
    std::function<void(fPrint&)> m_runner;
    std::function<bool(const QString&)> m_opener;
};

} // namespace vkm
