#pragma once

#include <QString>

namespace vkm {

// One catalogue entry: a function of the machine.
struct CSelection {
    QString Advice;    // help text
    QString Digital;   // the short name the machine's display shows
    qint16 value = 0;  // the function number stored in step programs
    QString Category;  // "IN", "OUT", "COUNT", ...
    QString Selection; // free label, set only by Add2
};

} // namespace vkm
