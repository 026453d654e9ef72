#pragma once

#include <QString>

namespace vkm {

class Settings;
class Prompter;
class CSelections;
class CSelectKino;
class CCustomInps;
class CCustomOuts;

// The shared objects that start-up creates and owns for the whole run, handed to the
// windows that need them.
struct AppContext {
    Settings* settings = nullptr;
    Prompter* prompter = nullptr;
    CSelections* selout = nullptr;    // output functions (Set08.e)
    CSelections* selinp = nullptr;    // input functions (Set09.e)
    CSelections* selCusInp = nullptr; // customisable input functions (Set06.e)
    CSelections* selCusOut = nullptr; // customisable output functions (Set07.e)
    CSelectKino* selectKino = nullptr;
    CCustomInps* cusI = nullptr;
    CCustomOuts* cusO = nullptr;
    QString initialPath; // "FileInfo"/InitialPath as read at start
};

// A catalogue of the context, or an empty one where start-up has none (a window made by a
// test, a catalogue that could not be read): the rules then simply find no function.
const CSelections& catalogueOrEmpty(const CSelections* catalogue);

} // namespace vkm
