#pragma once

#include <QString>

namespace vkm {

// Logic codes of an output.
enum Logic {
    LogicLow = 0,
    LogicHigh = 1,
    LogicNot = 2,
    LogicJmp = 3,
    LogicInc = 4,
    LogicDec = 5,
    LogicSet = 6,
    LogicClr = 7,
    LogicAdd = 8,
    LogicSub = 9,
    LogicCall = 10,
    LogicRet = 11,
};

// Delay kinds of an output (only even codes exist).
enum DelayKind { DelayTimer = 0, DelayStc = 2, DelayAngle1 = 4, DelayAngle2 = 6, DelayAngle3 = 8 };

// Relations of an input.
enum Relation {
    RelAnd = 0,
    RelOr = 1,
    RelEnd = 2,
    RelGe = 3,
    RelLe = 4,
    RelEq = 5,
    RelNe = 6,
    RelPlus = 7,
    RelMinus = 8
};

// States of an input.
enum State { StatePosLev = 0, StatePosEdg = 1, StateNegLev = 2, StateNegEdg = 3 };

// Categories the program reacts to by name.
namespace cat {
inline const QString IN = QStringLiteral("IN");
inline const QString OUT = QStringLiteral("OUT");
inline const QString OUT_S = QStringLiteral("OUT_S");
inline const QString RGST = QStringLiteral("RGST");
inline const QString COUNT = QStringLiteral("COUNT");
inline const QString JMP = QStringLiteral("JMP");
inline const QString SUB = QStringLiteral("SUB");
inline const QString CALL = QStringLiteral("CALL");
inline const QString RETURN = QStringLiteral("RETURN");
inline const QString STEP = QStringLiteral("STEP");
inline const QString MODE = QStringLiteral("MODE");
inline const QString ALL = QStringLiteral("ALL");
} // namespace cat

// Step targets: step n (1..32) as a jump/step target and as a call target.
constexpr qint16 jumpTarget(int n) {
    return qint16(n - 32769);
} // 0x8000 + n - 1
constexpr qint16 callTarget(int n) {
    return qint16(n - 16385);
} // 0xC000 + n - 1

} // namespace vkm
