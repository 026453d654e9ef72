#include "model/cstepinps.h"

namespace vkm {

CStepInps::Ptr CStepInps::Add(qint32 Block, qint32 Kino, quint8 Jyotai, qint32 Rel) {
    auto inp = std::make_shared<CStepInp>();
    inp->Block = Block;
    inp->Kino = Kino;
    inp->Jyotai = Jyotai;
    inp->Rel = Rel;
    if (!add(QString::number(Block), inp))
        return nullptr;
    return inp;
}

QString CStepInps::RelJ(int code) {
    static const char* const names[] = {"AND", "OR", "END", ">=", "<=", "=", "!=", "+", "-"};
    if (code < 0 || code > 8)
        return {};
    return QString::fromLatin1(names[code]);
}

QString CStepInps::JyotaiJ(int code) {
    static const char* const names[] = {"POS LEV", "POS EDG", "NEG LEV", "NEG EDG"};
    if (code < 0 || code > 3)
        return {};
    return QString::fromLatin1(names[code]);
}

} // namespace vkm
