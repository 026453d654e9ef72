// A customisation text (read from the machine or carried on a disk) into the terminals'
// values and back: no input may crash it; a text that covers every terminal gives values
// that, written into the same image, change nothing but bit 7 of the function bytes.
#include "fuzzsupport.h"

#include "base/scriptedprompter.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"
#include "link/transfertext.h"

#include <QByteArray>
#include <cstdint>
#include <cstdlib>

namespace {
// Terminals laid out as the bundled Set04.e / Set05.e lay them out: codes and flags sharing
// bytes, whole bytes, properties without an address.
struct Tables {
    vkm::CCustomInps inps;
    vkm::CCustomOuts outs;
    Tables() {
        inps.readLines(
            "IN01\t1792\t1793\t1\t1793\t2\t1793\t12\t1793\t16\t1793\t32\t1793\t64\t1794\t1795\t1\t1795\t2\t"
            "1795\t4\t1795\t48\t1795\t192\t1796\r\n"
            "IN09\t1856\t1857\t1\t1857\t2\t1857\t12\t1857\t16\t1857\t32\t\t0\t\t1859\t1\t1859\t2\t1859\t4"
            "\t\t0\t\t0\t\r\n");
        outs.readLines("OUT01\t2176\t2177\t1\t2177\t2\t2177\t4\t2178\t2179\t7\t2179\t112\t2180\t3\t2181\r\n"
                       "OUT07\t2224\t2225\t1\t\t0\t2225\t4\t2226\t\t0\t\t0\t2228\t3\t\r\n");
        if (inps.Count() != 2 || outs.Count() != 2)
            std::abort();
    }
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const Tables bundled;
    vkm::fuzz::muteErrorReports();
    vkm::ScriptedPrompter prompter; // "checksum error" boxes are recorded, not shown
    bool ok = false;
    const QByteArray image = vkm::parseTransferText(
        QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)), prompter, &ok);
    if (!ok)
        return 0;
    vkm::CCustomInps inps = bundled.inps;
    vkm::CCustomOuts outs = bundled.outs;
    const bool read = inps.ReadData(image) && outs.ReadData(image);
    // The last byte any terminal uses is OUT07's hold mode at 2228 - 1792.
    if (read != (image.size() > 2228 - 1792))
        std::abort();
    if (!read)
        return 0;
    QByteArray written = image;
    if (!inps.SaveCustomizeData(written) || !outs.SaveCustomizeData(written) ||
        written.size() != image.size())
        std::abort();
    QByteArray expected = image;
    for (const auto& t : inps)
        expected[t.KinoAdrs] = char(expected.at(t.KinoAdrs) & 0x7F);
    for (const auto& t : outs)
        expected[t.KinoAdrs] = char(expected.at(t.KinoAdrs) & 0x7F);
    if (written != expected)
        std::abort();
    return 0;
}
