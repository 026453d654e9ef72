#include "functionchooser.h"

#include "fselcategory.h"
#include "fselkino.h"

namespace vkm {

FunctionChooserDialogs::FunctionChooserDialogs(Settings* settings, Prompter& prompter, QWidget* parent)
    : m_settings(settings), m_prompter(prompter), m_parent(parent) {}

FunctionChooserDialogs::~FunctionChooserDialogs() {
    delete m_out.data();
    delete m_inp.data();
}

fSelKino* FunctionChooserDialogs::make(int In_or_Out) {
    auto* d = new fSelKino(m_settings, m_prompter, m_parent);
    d->In_or_Out = In_or_Out;
    d->setModal(true);
    if (m_prepared) {
        d->VMKKind = m_kind;
        d->sels = In_or_Out == 2 ? m_outSels : m_inpSels;
    }
    return d;
}

fSelKino* FunctionChooserDialogs::existing(int In_or_Out) const {
    return In_or_Out == 2 ? m_out.data() : m_inp.data();
}

fSelKino* FunctionChooserDialogs::dialog(int In_or_Out) {
    QPointer<fSelKino>& d = In_or_Out == 2 ? m_out : m_inp;
    if (!d)
        d = make(In_or_Out == 2 ? 2 : 1);
    return d.data();
}

void FunctionChooserDialogs::LoadForms(int kind, const CSelections* inpSels, const CSelections* outSels) {
    // A dialog is made when it is first opened, with what was prepared here: making both
    // dialogs (and building their trees) would hold up every window that prepares them,
    // the editor's first appearance among them.
    m_prepared = true;
    m_kind = kind;
    m_inpSels = inpSels;
    m_outSels = outSels;
    for (int side : {1, 2}) {
        fSelKino* d = existing(side);
        if (!d)
            continue;
        if (d->IsLoaded) {
            d->SelectTopNode();
            continue;
        }
        d->VMKKind = kind;
        d->In_or_Out = side;
        d->sels = side == 2 ? outSels : inpSels;
    }
}

void FunctionChooserDialogs::UnLoadForms() {
    for (int side : {2, 1})
        if (fSelKino* d = existing(side))
            d->unload();
}

qint16 FunctionChooserDialogs::GetKinoValue(int In_or_Out, qint16 orgValue) {
    const int side = In_or_Out == 2 ? 2 : 1;
    fSelKino* d = dialog(side);
    m_lastChosen = false;
    if (!d || !d->sels)
        return orgValue;
    d->orgValue = orgValue;
    d->In_or_Out = side;
    d->ClearStepTagVariant();
    d->Form_Load();
    m_lastChosen = d->exec() == QDialog::Accepted;
    return d->retValue;
}

FunctionChooser FunctionChooserDialogs::functionChooser() {
    return [this](int inOut, int orgValue, int /*row*/) -> std::optional<int> {
        const qint16 v = GetKinoValue(inOut, qint16(orgValue));
        if (!m_lastChosen)
            return std::nullopt;
        return int(v);
    };
}

CategoryChooser FunctionChooserDialogs::categoryChooser() const {
    QWidget* parent = m_parent;
    return [parent](const CSelections& sels, const QString& digital) {
        return fSelCategory::choose(sels, digital, parent);
    };
}

} // namespace vkm
