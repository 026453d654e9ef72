#pragma once

namespace vkm {

class CSelectKino;
class CSelections;
class CCustomInps;
class CCustomOuts;
class Prompter;

// Start-up loading of the setting archive: unpack it, read the output catalogue (Set08.e),
// the input catalogue (Set09.e), the custom input and output tables (Set04.e, Set05.e) and
// the customisation catalogues (Set06.e, Set07.e), each only after the one before it
// succeeded, then remove the unpacked files.
//
// A failed read shows message 142 naming the step ("selout.ReadSet6_7_8_9e", ...,
// "selCusInp.ReadSet6_7_8_9e", "selCusOut.ReadSet6_7_8_9e") and leaves the unpacked files in
// place; any failure (also of the unpacking, which shows its own box) is followed by
// message 19. Returns true when everything was read.
bool ReadInitialFiles(CSelectKino& kino, CSelections& selout, CSelections& selinp, CCustomInps& cusI,
                      CCustomOuts& cusO, CSelections& selCusInp, CSelections& selCusOut, Prompter& prompter);

} // namespace vkm
