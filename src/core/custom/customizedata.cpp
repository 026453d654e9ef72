#include "custom/customizedata.h"

#include "base/prompter.h"
#include "catalogue/cselectkino.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"
#include "custom/customizeeasysheet.h"
#include "link/machinefiles.h"
#include "link/transfertext.h"

namespace vkm {

bool ReadCustomizeData(const QString& path, QByteArray& image, CCustomInps& cusI, CCustomOuts& cusO,
                       Prompter& prompter) {
    const std::optional<QByteArray> bytes = readTransferFileToTemp(eUSR, path, 2, prompter);
    if (!bytes)
        return false;
    // Read into copies: a file that does not cover every terminal leaves what the program
    // held before untouched.
    CCustomInps inps = cusI;
    CCustomOuts outs = cusO;
    if (!inps.ReadData(*bytes) || !outs.ReadData(*bytes))
        return false;
    image = *bytes;
    cusI = std::move(inps);
    cusO = std::move(outs);
    return true;
}

QString GetFileNameToTransferCustom(const CustomizeEasySheet& sheet, CSelectKino& kino,
                                    const QByteArray& image, bool fromMachine, Prompter& prompter) {
    if (!kino.DoneMelt())
        return {};
    // The descriptions are read again from the archive, so that the write follows the
    // machine's layout and nothing a read may have left in the shared tables.
    CCustomInps inps;
    CCustomOuts outs;
    const bool inputsRead = inps.ReadSet04e(kino.workFolder());
    const bool outputsRead = inputsRead && outs.ReadSet05e(kino.workFolder());
    kino.DeleteSettingFiles();
    if (!outputsRead) {
        prompter.showMessage(
            142, 1, inputsRead ? QStringLiteral("cusO.ReadSet05e") : QStringLiteral("cusI.ReadSet04e"));
        return {};
    }
    if (!inps.ReadData(image) || !outs.ReadData(image))
        return {};
    if (!sheet.Update_Variable(inps, outs))
        return {};
    QByteArray changed = image;
    if (!inps.SaveCustomizeData(changed) || !outs.SaveCustomizeData(changed))
        return {};
    return transferFileForCustomImage(changed, fromMachine, prompter);
}

} // namespace vkm
