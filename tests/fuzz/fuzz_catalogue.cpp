// Catalogue line reader (Set06.e .. Set09.e layouts) and the look-ups over whatever it
// registered: no input may crash it or leave the look-ups inconsistent.
#include "fuzzsupport.h"

#include "catalogue/cselections.h"

#include <QByteArray>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vkm::fuzz::muteErrorReports();
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const char* name : {"Set08.e", "Set06.e"}) {
        vkm::CSelections sels;
        sels.readLines(bytes, QString::fromLatin1(name));
        for (const vkm::CSelection& e : sels.entries()) {
            // every registered entry is found again by its value and by its digital text
            if (sels.CategoryByValue(e.value).isEmpty() || sels.CountByDigital(e.Digital) < 1)
                std::abort();
            const qint16 v = sels.ValueByDigital(e.Category, e.Digital);
            if (v != -1 && sels.CategoryByValue(v).isEmpty())
                std::abort();
            qint32 mn = 0, mx = 0;
            sels.MinMaxByDigital(e.Category, e.Digital, mn, mx);
            sels.GetSelection(e.value);
            sels.CategoryByDigitalOnly(e.Digital);
        }
        if (sels.Count() > 0)
            sels.Remove(1);
        sels.categories();
    }
    return 0;
}
