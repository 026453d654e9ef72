#include "customizeeasycontroller.h"

#include "appcontext.h"
#include "base/prompter.h"
#include "custom/customizedata.h"
#include "fcomm.h"
#include "fcustomizeeasy.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTableView>

namespace vkm {

CustomizeEasyController::CustomizeEasyController(AppContext& context, MachineLink& link, QMdiArea* mdi,
                                                 QWidget* dialogParent)
    : m_context(context), m_link(link), m_mdi(mdi), m_dialogParent(dialogParent) {}

CustomizeEasyController::~CustomizeEasyController() {
    // The window works on this object: it goes first, without its question (the
    // application's own close has asked it).
    if (m_window) {
        QWidget* frame = m_window->parentWidget();
        delete (frame ? frame : m_window.data());
    }
}

fCustomizeEasy* CustomizeEasyController::window() const {
    return m_window.data();
}

bool CustomizeEasyController::ReadCustomizeEasy(int /*kind*/) {
    if (m_window && !m_window->SaveCheckCus())
        return false;
    const QString file = GetReadFileCustomizeEasy(0);
    if (file.isEmpty())
        return false;
    if (m_window) {
        // With its frame: closing the window alone would leave an empty frame in the area.
        m_window->discardChanges();
        m_window->closeWindow();
    }
    if (!ReadCustomizeData(file))
        return false;
    return openWindow(file) != nullptr;
}

QString CustomizeEasyController::GetReadFileCustomizeEasy(int kind) {
    if (m_machineRead)
        return m_machineRead(kind);
    return fComm::readFromMachine(m_link, *m_context.prompter, m_context.settings,
                                  CommTransfer::Customisation, kind != 0, m_dialogParent);
}

bool CustomizeEasyController::ReadCustomizeData(const QString& path) {
    if (!m_context.cusI || !m_context.cusO ||
        !vkm::ReadCustomizeData(path, m_image, *m_context.cusI, *m_context.cusO, *m_context.prompter)) {
        m_context.prompter->showMessage(4, 1, QStringLiteral("CUSTOMIZE"));
        return false;
    }
    return true;
}

bool CustomizeEasyController::readBeforeSave() {
    const QString file = GetReadFileCustomizeEasy(1);
    return !file.isEmpty() && ReadCustomizeData(file);
}

bool CustomizeEasyController::writeToMachine(const QString& file) {
    return fComm::writeToMachine(m_link, *m_context.prompter, m_context.settings, CommTransfer::Customisation,
                                 file, m_dialogParent);
}

fCustomizeEasy* CustomizeEasyController::openWindow(const QString& file) {
    auto* window = new fCustomizeEasy(*this, file);
    window->setAttribute(Qt::WA_DeleteOnClose);
    m_window = window;
    if (!m_mdi) {
        window->setParent(m_dialogParent, Qt::Tool);
        window->show();
        return window;
    }
    QMdiSubWindow* sub = m_mdi->addSubWindow(window);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    sub->show();
    window->Initialize();
    m_mdi->setActiveSubWindow(sub);
    window->grid()->setFocus();
    return window;
}

} // namespace vkm
