#pragma once

#include "model/cstep.h"
#include "model/keyedcollection.h"

#include <QDateTime>
#include <QString>
#include <functional>

namespace vkm {

class CSelections;

// Size of the step image.
constexpr int kStepImageSize = 1904;
constexpr int kMaxSteps = 32;

// The clock that keys the scrambling of author and password.
using Clock = std::function<QDateTime()>;
Clock systemClock();

// One step program.
class CSteps : public KeyedCollection<CStep> {
public:
    // Appends a step with Row = Count() + 1 under the key of its Row.
    Ptr Add(std::shared_ptr<CStepOuts> outs, std::shared_ptr<CStepInps> inps, const QString& Remark, bool NOP,
            bool GyoMuko);

    QString Memo;
    QString Password;
    QString Author;
    QString MemoFile; // "name.ext" or ""

    // Writes the program as a step image at path (see stepimage.cpp). The output
    // catalogue is not used; the input catalogue decides counter steps.
    bool SaveData(const QString& path, bool deleteFirst, const CSelections& selout, const CSelections& selinp,
                  const Clock& clock = systemClock()) const;
    // Replaces the program with the image at path. True only when every part was read.
    bool ReadData(const QString& path, const CSelections& selout, const CSelections& selinp);

    // The same over bytes in memory (the image is 1904 bytes; a shorter buffer fails).
    QByteArray toImage(const CSelections& selinp, const Clock& clock, bool* ok) const;
    bool fromImage(const QByteArray& image, const CSelections& selout, const CSelections& selinp);
};

// Scrambling of author (16 text bytes + 4 key bytes) and password (8 + 8).
// Empty optional-like result (empty array) on a character that cannot be scrambled.
QByteArray EncodeWord(const QString& text, bool authorForm, const QDateTime& now);
QString DecodeWord(const QByteArray& block, bool authorForm);
// The same, with *ok false (and a report) for a block that cannot be unscrambled.
QString DecodeWord(const QByteArray& block, bool authorForm, bool* ok);

// Limits of a delay value or operand: side 1 input, 2 output. lMin/lMax are left as the
// caller set them where no rule applies.
void GetValueRange(const QString& category, const QString& digital, int side, int logic, int delayKind,
                   const CSelections& selout, const CSelections& selinp, qint32& lMin, qint32& lMax);

} // namespace vkm
