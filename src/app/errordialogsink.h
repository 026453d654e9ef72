#pragma once

#include "base/errorreporter.h"

namespace vkm {

class Prompter;

// The error reporter of the running editor: every report is appended to the per-user
// log and shown in a critical box with its number, text and the operation's name, so
// that a user can read out all three to the service desk.
class ErrorDialogSink : public ErrorSink {
public:
    ErrorDialogSink(Prompter& prompter, const QString& logPath);
    void report(const ErrorReport& report) override;

    // The text of the box for one report.
    static QString dialogText(const ErrorReport& report);

private:
    // Shows the box; the log sink calls it after writing the line.
    class Dialog : public ErrorSink {
    public:
        explicit Dialog(Prompter& prompter) : m_prompter(prompter) {}
        void report(const ErrorReport& report) override;

    private:
        Prompter& m_prompter;
    };
    Dialog m_dialog;
    LogFileErrorSink m_log;
};

} // namespace vkm
