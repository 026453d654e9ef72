#pragma once

// Small catalogues and step programs shaped as the editor builds them, shared by the
// model and link tests.

#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/csteps.h"

#include <QDateTime>
#include <initializer_list>

namespace vkm::test {

struct Catalogues {
    CSelections selout;
    CSelections selinp;
};

inline Catalogues testCatalogues() {
    Catalogues c;
    auto& o = c.selout;
    o.Add("Y001", 256, "", "OUT", "0", "0");
    o.Add("Y002", 257, "", "OUT", "0", "0");
    o.Add("EMAKE", 511, "", "OUT", "0", "0");
    o.Add("R001", 768, "", "RGST", "0", "0");
    o.Add("CN16", 16, "", "COUNT", "0", "9999");
    o.Add("CN41", 41, "", "COUNT", "1", "500");
    o.Add("SUB", 28672, "", "SUB", "0", "0");
    o.Add("RET", 28673, "", "RETURN", "0", "0");
    for (int n = 1; n <= 32; ++n) {
        o.Add(QString("J%1").arg(n, 3, 10, QChar('0')), jumpTarget(n), "", "JMP", "0", "0");
        o.Add(QString("C%1").arg(n, 3, 10, QChar('0')), callTarget(n), "", "CALL", "0", "0");
    }
    auto& i = c.selinp;
    i.Add("X003", 3, "", "IN", "0", "0");
    i.Add("X001", 256, "", "IN", "0", "0");
    i.Add("X002", 257, "", "IN", "0", "0");
    i.Add("R001", 768, "", "RGST", "0", "0");
    i.Add("CN16", 16, "", "COUNT", "0", "99");
    i.Add("CN41", 41, "", "COUNT", "0", "0");
    i.Add("ALL", 1000, "", "ALL", "0", "0");
    for (int n = 1; n <= 32; ++n)
        i.Add(QString("S%1").arg(n, 3, 10, QChar('0')), jumpTarget(n), "", "STEP", "0", "0");
    return c;
}

struct Out {
    int kino = -1;
    int logic = 0;
    int delayKind = 0;
    int value = 0;
};
struct In {
    int kino = 0;
    int jyotai = StateNegEdg;
    int rel = RelEnd;
};

// One editor row: two outputs (a missing one is empty) and four inputs (missing ones are
// the empty input: function 0, state 3, relation END).
inline CSteps::Ptr addRow(CSteps& p, const Catalogues& c, std::initializer_list<Out> outs,
                          std::initializer_list<In> inps, const QString& remark = {}, bool disabled = false,
                          int counterId = 0) {
    auto o = std::make_shared<CStepOuts>();
    int block = 1;
    for (const Out& x : outs)
        o->Add(block++, x.kino, x.logic, x.delayKind, x.value, c.selout);
    for (; block <= 2; ++block)
        o->Add(block, -1, 0, 0, 0, c.selout);
    auto in = std::make_shared<CStepInps>();
    in->CounterId = counterId;
    block = 1;
    for (const In& x : inps)
        in->Add(block++, x.kino, quint8(x.jyotai), x.rel);
    for (; block <= 4; ++block)
        in->Add(block, 0, StateNegEdg, RelEnd);
    return p.Add(o, in, remark, false, disabled);
}

inline CSteps::Ptr addEmptyRow(CSteps& p) {
    return p.Add(nullptr, nullptr, {}, true, false);
}

// The editor saves all 32 rows of its grid; unused rows are empty steps.
inline CSteps& padRows(CSteps& p) {
    while (p.Count() < kMaxSteps)
        addEmptyRow(p);
    return p;
}

inline QDateTime fixedTime() {
    return QDateTime(QDate(2026, 11, 16), QTime(12, 5, 37));
}
inline Clock fixedClock() {
    return [] { return fixedTime(); };
}

enum class Shape { Counters, Flow, Pulses, Disabled, Texts, Full };

// Programs that exercise one feature each; Full fills all 32 rows.
inline CSteps buildProgram(Shape shape, const Catalogues& c) {
    CSteps p;
    switch (shape) {
    case Shape::Counters:
        // CN16 >= 50 (compare value in input 2), then CN41 + R001 = 7.
        addRow(p, c, {{16, LogicInc, DelayTimer, 0}}, {{16, 0, RelGe}, {50, 0, RelEnd}}, {}, false, 5);
        addRow(p, c, {{256, LogicHigh, DelayTimer, 10}}, {{41, 0, RelPlus}, {768, 0, RelEq}, {7, 0, RelEnd}},
               {}, false, 15);
        addRow(p, c, {{16, LogicSet, DelayTimer, 65000}}, {{256, StatePosLev, RelEnd}});
        break;
    case Shape::Flow:
        addRow(p, c, {{callTarget(3), 0, 0, 0}}, {{256, StatePosEdg, RelEnd}});
        addRow(p, c, {{jumpTarget(1), 0, 0, 0}}, {{1000, StatePosLev, RelEnd}});
        addRow(p, c, {{28672, 0, 0, 0}, {511, LogicHigh, DelayStc, 3}}, {{257, StateNegLev, RelEnd}});
        addEmptyRow(p);
        {
            // A RETURN row carries no inputs.
            auto o = std::make_shared<CStepOuts>();
            o->Add(1, 28673, 0, 0, 0, c.selout);
            o->Add(2, -1, 0, 0, 0, c.selout);
            p.Add(o, nullptr, {}, false, false);
        }
        break;
    case Shape::Pulses:
        addRow(p, c, {{256, LogicHigh, DelayAngle1, 900}, {256, LogicLow, DelayAngle1, 1800}},
               {{3, StatePosEdg, RelAnd}, {257, StateNegLev, RelOr}, {768, StatePosLev, RelEnd}});
        addRow(p, c, {{257, LogicNot, DelayAngle3, 3600}, {511, LogicHigh, DelayTimer, 65000}},
               {{3, StateNegEdg, RelAnd},
                {256, StatePosEdg, RelAnd},
                {257, StatePosLev, RelAnd},
                {768, StateNegLev, RelEnd}});
        break;
    case Shape::Disabled:
        addRow(p, c, {{256, LogicHigh, DelayStc, 20}}, {{3, StatePosEdg, RelEnd}}, {}, true);
        addEmptyRow(p);
        addRow(p, c, {{257, LogicLow, DelayAngle2, 5}, {768, LogicAdd, DelayTimer, 3}},
               {{256, StatePosLev, RelEnd}}, {}, true);
        break;
    case Shape::Texts:
        addRow(p, c, {{256, LogicHigh, DelayTimer, 50}}, {{3, StatePosEdg, RelEnd}}, "needle up");
        p.Add(std::make_shared<CStepOuts>(), std::make_shared<CStepInps>(), "only a remark", false, false);
        addEmptyRow(p);
        addRow(p, c, {{257, LogicLow, DelayTimer, 0}}, {{256, StatePosLev, RelEnd}}, "20 bytes remark ABCD");
        p.Author = "AUTHOR16CHARSXYZ";
        p.Password = "PASS1234";
        p.MemoFile = "NOTE1.TXT";
        p.Memo = "Memo of the program.\r\nSecond line.";
        break;
    case Shape::Full:
        for (int n = 1; n <= 32; ++n)
            addRow(p, c, {{256 + n % 2, n % 3, (n % 5) * 2, n * 7}, {jumpTarget(n), 0, 0, 0}},
                   {{3, n % 4, RelAnd}, {256, (n + 1) % 4, RelOr}, {257, n % 4, RelEnd}},
                   QString("row %1").arg(n), n % 7 == 0);
        p.Author = "VKM";
        p.Password = "77";
        p.MemoFile = "FULL.MEM";
        p.Memo = QString(400, 'm');
        break;
    }
    return padRows(p);
}

inline const std::initializer_list<Shape> kAllShapes = {Shape::Counters, Shape::Flow,  Shape::Pulses,
                                                        Shape::Disabled, Shape::Texts, Shape::Full};

} // namespace vkm::test
