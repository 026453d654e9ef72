#include "custom/initialfiles.h"

#include "base/prompter.h"
#include "catalogue/cselections.h"
#include "catalogue/cselectkino.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"

#include <functional>
#include <utility>
#include <vector>

namespace vkm {

bool ReadInitialFiles(CSelectKino& kino, CSelections& selout, CSelections& selinp, CCustomInps& cusI,
                      CCustomOuts& cusO, CSelections& selCusInp, CSelections& selCusOut, Prompter& prompter) {
    const QString folder = kino.workFolder();
    bool ok = kino.DoneMelt();
    if (ok) {
        // Each file is read only when the one before it was; the step's name tells the user
        // (and the maker) which file of the archive is broken.
        const std::vector<std::pair<QString, std::function<bool()>>> steps = {
            {QStringLiteral("selout.ReadSet6_7_8_9e"),
             [&] { return selout.ReadSet6_7_8_9e(folder, "Set08.e"); }},
            {QStringLiteral("selinp.ReadSet6_7_8_9e"),
             [&] { return selinp.ReadSet6_7_8_9e(folder, "Set09.e"); }},
            {QStringLiteral("cusI.ReadSet04e"), [&] { return cusI.ReadSet04e(folder); }},
            {QStringLiteral("cusO.ReadSet05e"), [&] { return cusO.ReadSet05e(folder); }},
            {QStringLiteral("selCusInp.ReadSet6_7_8_9e"),
             [&] { return selCusInp.ReadSet6_7_8_9e(folder, "Set06.e"); }},
            {QStringLiteral("selCusOut.ReadSet6_7_8_9e"),
             [&] { return selCusOut.ReadSet6_7_8_9e(folder, "Set07.e"); }},
        };
        for (const auto& [name, read] : steps) {
            if (!read()) {
                prompter.showMessage(142, 1, name);
                ok = false;
                break;
            }
        }
        if (ok)
            kino.DeleteSettingFiles();
    }
    if (!ok)
        prompter.showMessage(19, 1);
    return ok;
}

} // namespace vkm
