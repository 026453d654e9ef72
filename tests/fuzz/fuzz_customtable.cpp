// Set04.e / Set05.e line readers: no input may crash them, and every terminal they accept
// has masks and indexes as read.
#include "fuzzsupport.h"

#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"

#include <QByteArray>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vkm::fuzz::muteErrorReports();
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    vkm::CCustomInps inps;
    inps.readLines(bytes);
    for (const auto& t : inps)
        if (inps.Item(t.Location) == nullptr)
            std::abort();
    vkm::CCustomOuts outs;
    outs.readLines(bytes);
    for (const auto& t : outs)
        if (outs.Item(t.Location) == nullptr)
            std::abort();
    return 0;
}
