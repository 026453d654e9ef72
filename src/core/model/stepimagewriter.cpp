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

// Writes into an image buffer at a position, growing it when a write reaches past its
// end (a longer program or a longer old file keeps what lies beyond).
class ImageWriter {
public:
    explicit ImageWriter(QByteArray& image) : m_image(image) {}
    void seek(int pos) { m_pos = pos; }
    void put(const QByteArray& bytes) {
        if (m_image.size() < m_pos + bytes.size())
            m_image.resize(m_pos + bytes.size(), '\0');
        std::copy(bytes.begin(), bytes.end(), m_image.begin() + m_pos);
        m_pos += int(bytes.size());
    }
    void putByte(int b) { put(QByteArray(1, char(b))); }
    void putWord(int w) {
        QByteArray b(2, '\0');
        b[0] = char(w & 0xFF);
        b[1] = char((w >> 8) & 0xFF);
        put(b);
    }
    void putZeros(int n) { put(QByteArray(n, '\0')); }

private:
    QByteArray& m_image;
    int m_pos = 0;
};

// Program text as a fixed field: blanks trimmed at both ends, legacy code page, cut or
// zero-padded to size.
QByteArray textField(const QString& text, int size) {
    QString t = text;
    while (t.startsWith(QLatin1Char(' ')))
        t.remove(0, 1);
    while (t.endsWith(QLatin1Char(' ')))
        t.chop(1);
    QByteArray bytes = LegacyText::encode(t).left(size);
    bytes.resize(size, '\0');
    return bytes;
}

QByteArray rawField(const QString& text, int size) {
    QByteArray bytes = LegacyText::encode(text).left(size);
    bytes.resize(size, '\0');
    return bytes;
}

bool SaveHeader(ImageWriter& w, const CSteps& program, const QDateTime& now) {
    w.seek(kTagOffset);
    w.put(QByteArray(kFormatTag));
    for (const auto& [word, author] :
         {std::pair{&program.Author, true}, std::pair{&program.Password, false}}) {
        if (word->isEmpty()) {
            w.putZeros(author ? kAuthorSize : kPasswordSize);
            continue;
        }
        const QByteArray block = EncodeWord(*word, author, now);
        if (block.isEmpty())
            return false; // reported by EncodeWord
        w.put(block);
    }
    const int dot = program.MemoFile.lastIndexOf(QLatin1Char('.'));
    const QString base = dot < 0 ? program.MemoFile : program.MemoFile.left(dot);
    const QString ext = dot < 0 ? QString() : program.MemoFile.mid(dot + 1);
    w.put(rawField(base, kMemoNameSize));
    w.put(rawField(ext, kMemoExtSize));
    w.putZeros(kHeaderPadSize);
    return true;
}

void PutNullOutput(ImageWriter& w) {
    w.putWord(0);
    w.putByte(kEmptyOutputFlag);
    w.putWord(0);
}

void PutNullInput(ImageWriter& w) {
    w.putWord(0);
    w.putByte(kEmptyInputState);
}

void WriteNullLine(ImageWriter& w) {
    for (int i = 0; i < kOutputsPerStep; ++i)
        PutNullOutput(w);
    for (int i = 0; i < kInputsPerStep; ++i)
        PutNullInput(w);
}

bool failStep(int number) {
    reportError(number, QStringLiteral("WriteStep"));
    return false;
}

bool writeOutputs(ImageWriter& w, const CStep& step) {
    // Records are placed by Block, so a step always takes its 22 bytes even when the
    // program was read from an image that left its second output empty.
    for (int block = 1; block <= kOutputsPerStep; ++block) {
        const auto out = step.outs->Item(QString::number(block));
        if (!out || out->Kino == -1) {
            PutNullOutput(w);
            continue;
        }
        const int flag = ((step.GyoMuko ? 1 : 0) + out->DelayKind) * 16 | out->Logic;
        // Upper four bits all ones would turn the output into an empty one on the machine.
        if (flag < 0 || flag >= kEmptyOutputFlag || out->DelayEtc < 0 || out->DelayEtc > 0xFFFF)
            return failStep(ErrOverflow);
        w.putWord(quint16(out->Kino));
        w.putByte(flag);
        w.putWord(out->DelayEtc);
    }
    return true;
}

bool writeInputs(ImageWriter& w, const CStep& step, const CSelections& selinp) {
    // A step with a RETURN output has no inputs the machine looks at: read back it has
    // none, and the editor hands over four empty records. Either way they go out empty,
    // without asking the catalogue about function 0.
    const auto first = step.inps ? step.inps->Item(QStringLiteral("1")) : nullptr;
    const bool emptyFirst = first && first->Kino == 0 && first->Rel == RelEnd && first->Jyotai == StateNegEdg;
    if (!step.inps || step.inps->Count() == 0 || emptyFirst) {
        for (int i = 0; i < kInputsPerStep; ++i)
            PutNullInput(w);
        return true;
    }
    if (!first || !selinp.Item(QString::number(qint16(first->Kino))))
        return failStep(ErrInvalidCall);
    // In a counter step the low nibble of every state byte carries the counter number.
    const bool counter = isCounterStep(*step.inps, selinp);
    bool afterEnd = false;
    for (int block = 1; block <= kInputsPerStep; ++block) {
        const auto inp = step.inps->Item(QString::number(block));
        if (afterEnd || !inp) {
            PutNullInput(w);
            continue;
        }
        const int state = (inp->Rel * 16) | (counter ? step.inps->CounterId : int(inp->Jyotai));
        if (inp->Kino < -32768 || inp->Kino > 0xFFFF || inp->Rel < 0 || state > 0xFF)
            return failStep(ErrOverflow);
        w.putWord(inp->Kino & 0xFFFF);
        w.putByte(state);
        if (inp->Rel == RelEnd)
            afterEnd = true; // the machine reads no further than END
    }
    return true;
}

bool WriteStep(ImageWriter& w, const CSteps& program, const CSelections& selinp) {
    w.seek(kStepsOffset);
    for (const auto& step : program) {
        if (step->NOP || !step->outs || step->outs->Count() == 0) {
            WriteNullLine(w);
            continue;
        }
        if (!writeOutputs(w, *step) || !writeInputs(w, *step, selinp))
            return false;
    }
    return true;
}

bool WriteRemark(ImageWriter& w, const CSteps& program) {
    w.seek(kRemarksOffset);
    w.putZeros(kRemarkSize * kStepRecords);
    for (const auto& step : program) {
        const QByteArray field = textField(step->Remark, kRemarkSize);
        if (field.count('\0') == kRemarkSize)
            continue;
        if (step->Row < 1) {
            reportError(ErrInvalidCall, QStringLiteral("WriteRemark"));
            return false;
        }
        // By Row, not by position in the collection: the machine shows remark n on step n.
        w.seek(kRemarksOffset + (step->Row - 1) * kRemarkSize);
        w.put(field);
    }
    return true;
}

void WriteMemo(ImageWriter& w, const CSteps& program) {
    w.seek(kMemoOffset);
    w.put(textField(program.Memo, kMemoSize));
}

bool writeImage(QByteArray& image, const CSteps& program, const CSelections& selinp, const QDateTime& now) {
    ImageWriter w(image);
    if (!SaveHeader(w, program, now) || !WriteStep(w, program, selinp) || !WriteRemark(w, program))
        return false;
    WriteMemo(w, program);
    return true;
}

} // namespace

QByteArray CSteps::toImage(const CSelections& selinp, const Clock& clock, bool* ok) const {
    QByteArray image(kImageSize, '\0');
    const bool written = writeImage(image, *this, selinp, clock ? clock() : QDateTime::currentDateTime());
    if (ok)
        *ok = written;
    return written ? image : QByteArray();
}

bool CSteps::SaveData(const QString& path, bool deleteFirst, const CSelections& /*selout*/,
                      const CSelections& selinp, const Clock& clock) const {
    if (deleteFirst && QFile::exists(path) && !QFile::remove(path)) {
        reportError(ErrPermissionDenied, QStringLiteral("SaveData"));
        return false;
    }
    // The image is written in place without shortening the file: what the file held past
    // the written fields (steps beyond the program's count, bytes past 1903) stays.
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) {
        reportError(ErrPathAccess, QStringLiteral("SaveData"));
        return false;
    }
    QByteArray image = file.read(kImageSize);
    image.resize(kImageSize, '\0');
    if (!writeImage(image, *this, selinp, clock ? clock() : QDateTime::currentDateTime()))
        return false;
    if (!file.seek(0) || file.write(image) != image.size() || !file.flush()) {
        reportError(ErrIO, QStringLiteral("SaveData"));
        return false;
    }
    return true;
}

} // namespace vkm
