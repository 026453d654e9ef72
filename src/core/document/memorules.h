#pragma once

#include <QString>

namespace vkm {

class Prompter;
class CSteps;

// The memo area of the step image holds 496 bytes of legacy-code-page text.
constexpr int kMemoMaxBytes = 496;

// Bytes still free in the memo area for this text; below zero when it is too long.
int memoRemaining(const QString& memo);

// The related memo file: a name in 8.3 form (1..8 bytes, a point, 1..3 bytes) in the
// folder of the program's file, because the image keeps only the bare name and the
// machine tools look for it beside the program. Message 136 for a bad name, 138 for
// another folder.
bool checkMemoFile(const QString& path, const QString& programFolder, Prompter& prompter);

// What the memo window's OK stores. A memo longer than 496 bytes is refused with
// message 56 (nothing stored, returns false). Otherwise memo and memo file name are
// stored where they differ, and changed tells whether anything did.
bool storeMemo(CSteps& program, const QString& memo, const QString& memoFileName, Prompter& prompter,
               bool& changed);

} // namespace vkm
