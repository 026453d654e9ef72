#pragma once

// What the fuzz targets share. Bad input is what they feed, so the reports it causes are
// expected; printing each one would bury the driver's own output.
#include "base/errorreporter.h"

namespace vkm::fuzz {

// Sends error reports nowhere for the rest of the run.
inline void muteErrorReports() {
    struct Quiet : ErrorSink {
        void report(const ErrorReport&) override {}
    };
    static Quiet quiet;
    ErrorReporter::setSink(&quiet);
}

} // namespace vkm::fuzz
