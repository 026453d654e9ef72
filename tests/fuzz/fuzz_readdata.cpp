// Bytes -> step program -> bytes: any image reads without a fault; a program read from an
// image writes (into the private temporary folder only) and reads back to the same steps.
#include "fuzzsupport.h"

#include "base/tempfolder.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/csteps.h"

#include <QDateTime>
#include <cstdint>
#include <cstdlib>

namespace {
struct Catalogues {
    vkm::CSelections selout, selinp;
    Catalogues() {
        selout.Add("Y001", 256, "", "OUT", "0", "0");
        selout.Add("CN16", 16, "", "COUNT", "0", "9999");
        selout.Add("SUB", 28672, "", "SUB", "0", "0");
        selout.Add("RET", 28673, "", "RETURN", "0", "0");
        selout.Add("J001", vkm::jumpTarget(1), "", "JMP", "0", "0");
        selout.Add("C001", vkm::callTarget(1), "", "CALL", "0", "0");
        selinp.Add("X001", 256, "", "IN", "0", "0");
        selinp.Add("X003", 258, "", "IN", "0", "0");
        selinp.Add("CN16", 16, "", "COUNT", "0", "99");
        selinp.Add("ZERO", 0, "", "IN", "0", "0");
        selinp.Add("ALL", 1000, "", "ALL", "0", "0");
    }
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const Catalogues c;
    vkm::fuzz::muteErrorReports();
    const QByteArray image(reinterpret_cast<const char*>(data), qsizetype(size));
    vkm::CSteps program;
    if (!program.fromImage(image, c.selout, c.selinp)) {
        if (size >= size_t(vkm::kStepImageSize) && program.Count() != 0)
            std::abort();
        return 0;
    }
    if (program.Count() != vkm::kMaxSteps)
        std::abort();
    // Writing normalises what the machine ignores (inputs after END, the empty marker -1
    // of a function, bits of a counter step's state); after that, image -> program ->
    // image must not change a byte.
    const vkm::Clock clock = [] { return QDateTime(QDate(2026, 11, 22), QTime(10, 20, 30)); };
    const QString path = vkm::TempFolder::instance().filePath(QStringLiteral("fuzz_readdata.bin"));
    if (!program.SaveData(path, true, c.selout, c.selinp, clock))
        return 0; // a value the writer refuses (a function the catalogue lacks, ...)
    vkm::CSteps once;
    if (!once.ReadData(path, c.selout, c.selinp))
        std::abort();
    bool ok = false;
    const QByteArray second = once.toImage(c.selinp, clock, &ok);
    if (!ok)
        return 0;
    vkm::CSteps twice;
    if (!twice.fromImage(second, c.selout, c.selinp) || twice.toImage(c.selinp, clock, nullptr) != second)
        std::abort();
    return 0;
}
