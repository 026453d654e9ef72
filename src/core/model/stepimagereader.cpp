#include "model/csteps.h"

#include "base/errorreporter.h"
#include "base/legacytext.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/stepimagelayout.h"
#include "model/steprules.h"

#include <QFile>

namespace vkm {

using namespace image;

namespace {

// Reads from an image buffer; a read past its end fails, and the part that tried it
// reports the error under its own name.
class ImageReader {
public:
    explicit ImageReader(const QByteArray& image) : m_image(image) {}
    void seek(int pos) { m_pos = pos; }
    bool has(int n) const { return m_pos >= 0 && m_pos + n <= m_image.size(); }
    QByteArray take(int n) {
        const QByteArray b = m_image.mid(m_pos, n);
        m_pos += n;
        return b;
    }
    int byte() { return quint8(m_image[m_pos++]); }
    int word() {
        const int lo = byte();
        return lo | (byte() << 8);
    }

private:
    const QByteArray& m_image;
    int m_pos = 0;
};

bool pastEnd(const char* procedure) {
    reportError(ErrInputPastEnd, QString::fromLatin1(procedure));
    return false;
}

// A text field ends at its first zero byte.
QString fieldText(const QByteArray& bytes) {
    const int end = int(bytes.indexOf('\0'));
    return LegacyText::decode(end < 0 ? bytes : bytes.left(end));
}

bool ReadMemoFile(ImageReader& r, QString& memoFile) {
    if (!r.has(kMemoNameSize + kMemoExtSize))
        return pastEnd("ReadMemoFile");
    auto part = [&](int n) {
        QByteArray b = r.take(n);
        b.replace('\0', ' ');
        return LegacyText::decode(b).trimmed();
    };
    const QString base = part(kMemoNameSize);
    const QString ext = part(kMemoExtSize);
    memoFile = !base.isEmpty() && !ext.isEmpty() ? base + QLatin1Char('.') + ext : QString();
    return true;
}

struct OutputCols {
    std::shared_ptr<CStepOuts> outs = std::make_shared<CStepOuts>();
    bool empty = false;
    bool disabled = false;
};

bool GetOutputCols(ImageReader& r, const CSelections& selout, OutputCols& cols) {
    if (!r.has(kOutputRecordSize * kOutputsPerStep))
        return pastEnd("GetOutputCols");
    for (int block = 1; block <= kOutputsPerStep; ++block) {
        const qint16 kino = qint16(r.word());
        const int flag = r.byte();
        const int value = r.word();
        if ((flag & 0xF0) == 0xF0) {
            if (block == 1)
                cols.empty = true; // the step holds nothing, whatever the second output says
            continue;
        }
        if (flag & kDisabledBit)
            cols.disabled = true;
        // Bits 7..5 hold delay kind / 2; codes the machine does not know (10, 12, 14) are
        // kept as they are so that they are shown and written back unchanged.
        const int delayKind = (flag & 0xE0) >> 4;
        cols.outs->Add(block, kino, flag & 0x0F, delayKind, value, selout);
    }
    return true;
}

bool GetInputCols(ImageReader& r, const CSelections& selinp, CStepInps& inps) {
    if (!r.has(kInputRecordSize * kInputsPerStep))
        return pastEnd("GetInputCols");
    const QByteArray raw = r.take(kInputRecordSize * kInputsPerStep);
    auto kinoAt = [&](int i) { return qint16(quint8(raw[i * 3]) | (quint8(raw[i * 3 + 1]) << 8)); };
    auto stateAt = [&](int i) { return quint8(raw[i * 3 + 2]); };
    if (isCounterStep(kinoAt(0), selinp))
        inps.CounterId = stateAt(0) & 0x0F;
    for (int i = 0; i < kInputsPerStep; ++i)
        inps.Add(i + 1, kinoAt(i), quint8(stateAt(i) & 3), stateAt(i) / 16);
    return true;
}

bool readSteps(ImageReader& r, CSteps& program, const CSelections& selout, const CSelections& selinp) {
    r.seek(kStepsOffset);
    for (int n = 0; n < kStepRecords; ++n) {
        OutputCols cols;
        if (!GetOutputCols(r, selout, cols))
            return false;
        if (cols.empty) {
            r.seek(kStepsOffset + (n + 1) * kStepRecordSize);
            program.Add(nullptr, nullptr, QString(), true, false);
        } else if (cols.outs->ExistRet(selout)) {
            r.seek(kStepsOffset + (n + 1) * kStepRecordSize);
            program.Add(cols.outs, nullptr, QString(), false, cols.disabled);
        } else {
            auto inps = std::make_shared<CStepInps>();
            if (!GetInputCols(r, selinp, *inps))
                return false;
            program.Add(cols.outs, inps, QString(), false, cols.disabled);
        }
    }
    return true;
}

bool ReadRem(ImageReader& r, CSteps& program) {
    r.seek(kRemarksOffset);
    if (!r.has(kRemarkSize * kStepRecords))
        return pastEnd("ReadRem");
    for (int i = 1; i <= kStepRecords; ++i) {
        const QString remark = fieldText(r.take(kRemarkSize));
        if (const auto step = program.Item(i))
            step->Remark = remark;
    }
    return true;
}

bool ReadMemo(ImageReader& r, QString& memo) {
    r.seek(kMemoOffset);
    if (!r.has(kMemoSize))
        return pastEnd("ReadMemo");
    memo = fieldText(r.take(kMemoSize));
    return true;
}

bool readImage(const QByteArray& image, CSteps& program, const CSelections& selout,
               const CSelections& selinp) {
    ImageReader r(image);
    r.seek(kAuthorOffset); // the format tag is not checked: older machines wrote others
    if (!r.has(kAuthorSize + kPasswordSize))
        return pastEnd("DecodeWord");
    bool ok = false;
    program.Author = DecodeWord(r.take(kAuthorSize), true, &ok);
    if (!ok)
        return false;
    program.Password = DecodeWord(r.take(kPasswordSize), false, &ok);
    if (!ok)
        return false;
    return ReadMemoFile(r, program.MemoFile) && readSteps(r, program, selout, selinp) &&
           ReadRem(r, program) && ReadMemo(r, program.Memo);
}

} // namespace

bool CSteps::fromImage(const QByteArray& image, const CSelections& selout, const CSelections& selinp) {
    CSteps read;
    if (!readImage(image, read, selout, selinp)) {
        clear(); // the old steps are gone either way: the caller starts afresh
        return false;
    }
    *this = std::move(read);
    return true;
}

bool CSteps::ReadData(const QString& path, const CSelections& selout, const CSelections& selinp) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        clear();
        reportError(file.exists() ? ErrPermissionDenied : ErrFileNotFound, QStringLiteral("ReadData"));
        return false;
    }
    // Only the image's own bytes matter; a longer file (written in place) keeps a tail.
    return fromImage(file.read(kImageSize), selout, selinp);
}

} // namespace vkm
