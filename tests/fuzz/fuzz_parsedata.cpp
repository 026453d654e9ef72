// Transfer text -> bytes: any input parses without a fault, and whatever step image it
// yields converts back to text that parses to the same bytes.
#include "fuzzsupport.h"

#include "base/scriptedprompter.h"
#include "link/memorymap.h"
#include "link/transfertext.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vkm::fuzz::muteErrorReports();
    const QByteArray text(reinterpret_cast<const char*>(data), qsizetype(size));
    vkm::ScriptedPrompter prompter;
    bool ok = false;
    const QByteArray bytes = vkm::parseTransferText(text, prompter, &ok);
    if (bytes.size() % vkm::memmap::kRecordDataBytes != 0 || qsizetype(bytes.size()) > qsizetype(size))
        std::abort(); // whole records only, never more data than text
    if (bytes.size() >= vkm::memmap::kStepImageBytes) {
        const QByteArray image = bytes.left(vkm::memmap::kStepImageBytes);
        const QByteArray again = vkm::parseTransferText(vkm::stepImageToText(image), prompter);
        if (again != image)
            std::abort();
    }
    return 0;
}
