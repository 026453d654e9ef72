#pragma once

// One start-up of the whole editor with a scratch settings store, a scripted prompter and
// the bundled archive, for the tests that drive the application as it starts.
#include "base/errorreporter.h"
#include "base/scriptedprompter.h"
#include "startup.h"
#include "testsupport.h"

namespace vkm::test {

struct StartupRig {
    TempSettings store;
    ScriptedPrompter prompter;
    CapturingErrorSink errors;
    StartupOptions options;

    StartupRig() {
        options.settings = store.settings.get();
        options.prompter = &prompter;
        options.archiveOverride = bundledArchive();
        options.lockFile = store.scratch.file(QStringLiteral("vkmstep.lock"));
        options.installErrorSink = false;
    }
};

} // namespace vkm::test
