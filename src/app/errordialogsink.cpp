#include "errordialogsink.h"

#include "base/prompter.h"

namespace vkm {

ErrorDialogSink::ErrorDialogSink(Prompter& prompter, const QString& logPath)
    : m_dialog(prompter), m_log(logPath, &m_dialog) {}

void ErrorDialogSink::report(const ErrorReport& report) {
    m_log.report(report);
}

QString ErrorDialogSink::dialogText(const ErrorReport& report) {
    return QStringLiteral("Error %1: %2\n\n%3").arg(report.number).arg(report.text, report.procedure);
}

void ErrorDialogSink::Dialog::report(const ErrorReport& report) {
    if (report.quiet)
        return; // in the log; the user hears of its consequence from a message of its own
    m_prompter.showText(dialogText(report), 1);
}

} // namespace vkm
