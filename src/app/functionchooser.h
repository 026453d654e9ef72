#pragma once

#include "catalogue/choosecategory.h"
#include "sheet/stepsheeteditor.h"

#include <QPointer>

class QWidget;

namespace vkm {

class CSelections;
class Prompter;
class Settings;
class fSelKino;

// Owns the two function selection dialogs (input and output) for one user of them and
// opens them for a cell: the window side of the catalogue loader's GetKinoValue,
// LoadForms and UnLoadForms.
class FunctionChooserDialogs {
public:
    FunctionChooserDialogs(Settings* settings, Prompter& prompter, QWidget* parent = nullptr);
    ~FunctionChooserDialogs();
    FunctionChooserDialogs(const FunctionChooserDialogs&) = delete;
    FunctionChooserDialogs& operator=(const FunctionChooserDialogs&) = delete;

    // kind 3 from the step editor, 1 from the easy customisation editor.
    void LoadForms(int kind, const CSelections* inpSels, const CSelections* outSels);
    void UnLoadForms();
    // Opens the dialog of the side (2 output, anything else input) modally and returns its
    // retValue: the chosen value, or orgValue when the user cancelled.
    qint16 GetKinoValue(int In_or_Out, qint16 orgValue);
    // Whether the last GetKinoValue ended with a choice (Select) rather than Cancel.
    bool lastWasChosen() const { return m_lastChosen; }

    // The dialog of the side (2 output, anything else input), made on first use.
    fSelKino* dialog(int In_or_Out);
    // The dialog of the side if it has been made, else nullptr.
    fSelKino* existing(int In_or_Out) const;

    // The callbacks the sheet editor takes: a chosen function number or nullopt when the
    // dialog was cancelled; the category dialog for shared digital texts.
    FunctionChooser functionChooser();
    CategoryChooser categoryChooser() const;

private:
    fSelKino* make(int In_or_Out);

    Settings* m_settings;
    Prompter& m_prompter;
    QWidget* m_parent;
    QPointer<fSelKino> m_inp;
    QPointer<fSelKino> m_out;
    // What LoadForms prepared, for the dialogs made later.
    bool m_prepared = false;
    int m_kind = 0;
    const CSelections* m_inpSels = nullptr;
    const CSelections* m_outSels = nullptr;
    bool m_lastChosen = false;
};

} // namespace vkm
