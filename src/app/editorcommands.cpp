#include "editorcommands.h"

#include "appcontext.h"
#include "fdlgreplace.h"
#include "ffind.h"
#include "fpulse.h"
#include "functionchooser.h"
#include "stepeditorwindow.h"

#include "base/prompter.h"
#include "base/settings.h"

#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QTableView>

namespace vkm {

namespace {
// The desktop's clipboard: rows copied in one editor window paste into the other, and
// into any text editor and back.
class SystemClipboard : public TextClipboard {
public:
    QString text() const override { return QGuiApplication::clipboard()->text(); }
    void setText(const QString& text) override { QGuiApplication::clipboard()->setText(text); }
};

SystemClipboard& systemClipboard() {
    static SystemClipboard clipboard;
    return clipboard;
}

// An option as the editor and the pulse window read it: the key's default without a store.
bool option(const Settings* settings, const BoolKey& key) {
    return settings ? settings->value(key) : key.defaultValue;
}
} // namespace

EditorCommands::EditorCommands(AppContext& context, StepEditorWindow& window)
    : m_context(context), m_window(window) {
    wireEditor();
    connect(&window, &StepEditorWindow::commandTriggered, this, [this](const QString& key) { run(key); });
    connect(&window, &StepEditorWindow::pulseRefreshRequested, this,
            [this](int row) { PulseOp(row, m_window.editor().sheet().col()); });
    m_selectionListener = window.editor().sheet().addSelectionListener([this] {
        const StepSheet& sheet = m_window.editor().sheet();
        PulseOp(sheet.row(), sheet.col());
    });
    window.grid()->installEventFilter(this);
}

EditorCommands::~EditorCommands() {
    m_window.editor().sheet().removeListener(m_selectionListener);
    // The tool windows belong to the main window but work on this editor: they go with it.
    delete m_find.data();
    delete m_pulse.data();
}

fFind* EditorCommands::findWindow() const {
    return m_find.data();
}

fPulse* EditorCommands::pulseWindow() const {
    return m_pulse.data();
}

void EditorCommands::wireEditor() {
    StepSheetEditor& editor = m_window.editor();
    editor.setClipboard(&systemClipboard());
    EditorHooks hooks = editor.hooks();
    hooks.option = [settings = m_context.settings](const BoolKey& key) { return option(settings, key); };
    hooks.confirmReplace = [this](const QString& oldDigital, const QString& newDigital) {
        return fDlgReplace::ask(oldDigital, newDigital, &m_window);
    };
    editor.setHooks(hooks);
}

bool EditorCommands::run(const QString& key) {
    StepSheetEditor& editor = m_window.editor();
    if (key == QLatin1String("keyCOPY"))
        editor.rowClipboard().copySelection();
    else if (key == QLatin1String("keyCUT"))
        editor.rows().cutCommand();
    else if (key == QLatin1String("keyPASTE"))
        editor.rowClipboard().pasteCommand();
    else if (key == QLatin1String("keyROWINSERT"))
        editor.rows().insertCommand();
    else if (key == QLatin1String("keyREM"))
        editor.rows().RemOp();
    else if (key == QLatin1String("keyFind"))
        FindOp();
    else if (key == QLatin1String("keyPULSE"))
        openPulse();
    else
        return false;
    if (key != QLatin1String("keyFind") && key != QLatin1String("keyPULSE"))
        m_window.grid()->setFocus();
    m_window.PrintHint();
    return true;
}

fFind* EditorCommands::FindOp() {
    if (!m_find) {
        FunctionChooser chooser = m_window.editor().hooks().chooseFunction;
        if (m_window.isComparison() || !chooser) {
            m_browseDialogs =
                std::make_unique<FunctionChooserDialogs>(m_context.settings, *m_context.prompter, &m_window);
            m_browseDialogs->LoadForms(3, m_context.selinp, m_context.selout);
            chooser = m_browseDialogs->functionChooser();
        }
        m_find = new fFind(m_window.editor(), chooser, m_window.window());
        connect(m_find, &fFind::replacedAll, this, [this](int count) {
            m_replacedCount = count;
            m_window.activateWindow();
            m_window.grid()->setFocus();
            if (m_window.grid()->hasFocus())
                reportReplaced();
        });
    }
    m_find->open();
    m_find->show();
    m_find->raise();
    return m_find;
}

// After Replace all the find window is gone; the editor, active again, opens it anew and
// says how many functions were replaced.
void EditorCommands::reportReplaced() {
    const int count = std::exchange(m_replacedCount, 0);
    if (count == 0)
        return;
    FindOp();
    m_context.prompter->showMessage(75, 2, QString::number(count));
}

bool EditorCommands::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && m_replacedCount > 0)
        reportReplaced();
    return QObject::eventFilter(watched, event);
}

fPulse* EditorCommands::openPulse() {
    if (m_window.isComparison())
        return nullptr;
    if (!m_pulse)
        m_pulse = new fPulse(m_window.editor(), m_context.settings, m_window.editor().hooks().chooseFunction,
                             m_window.window());
    const StepSheet& sheet = m_window.editor().sheet();
    if (!m_pulse->IsLoaded()) {
        m_pulse->show();
        m_pulse->ShowLine(sheet.row());
        if (m_window.editor().pulse().CanInputPulse(sheet.row(), sheet.col()))
            m_pulse->PasteValue();
        else
            m_pulse->ResetFace();
    }
    m_pulse->raise();
    return m_pulse;
}

void EditorCommands::PulseOp(int row, int col) {
    if (m_window.isComparison())
        return;
    const bool loaded = m_pulse && m_pulse->IsLoaded();
    const bool automatic = option(m_context.settings, keys::DoesShowPulseAutomatic);
    switch (PulsePair::PulseOp(loaded, automatic, m_window.editor().pulse().CanInputPulse(row, col))) {
    case PulseFollow::Open:
        openPulse();
        break;
    case PulseFollow::Fill:
        m_pulse->PasteValue();
        break;
    case PulseFollow::Clear:
        m_pulse->ResetFace();
        break;
    case PulseFollow::Nothing:
        break;
    }
    if (m_pulse && m_pulse->IsLoaded())
        m_pulse->ShowLine(row);
}

} // namespace vkm
