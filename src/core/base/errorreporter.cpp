#include "base/errorreporter.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <cstdio>

namespace vkm {

namespace {
ErrorSink* g_sink = nullptr;
}

QString errorText(int number) {
    switch (number) {
    case ErrInvalidCall:
        return QStringLiteral("Invalid procedure call or argument");
    case ErrOverflow:
        return QStringLiteral("Overflow");
    case ErrSubscript:
        return QStringLiteral("Subscript out of range");
    case ErrTypeMismatch:
        return QStringLiteral("Type mismatch");
    case ErrFileNotFound:
        return QStringLiteral("File not found");
    case ErrBadFileMode:
        return QStringLiteral("Bad file mode");
    case ErrIO:
        return QStringLiteral("Device I/O error");
    case ErrDiskFull:
        return QStringLiteral("Disk full");
    case ErrInputPastEnd:
        return QStringLiteral("Input past end of file");
    case ErrPermissionDenied:
        return QStringLiteral("Permission denied");
    case ErrPathAccess:
        return QStringLiteral("Path/File access error");
    case ErrPathNotFound:
        return QStringLiteral("Path not found");
    case ErrDuplicateKey:
        return QStringLiteral("This key is already associated with an element of this collection");
    case ErrCancelled:
        return QStringLiteral("Cancel was selected.");
    default:
        return {};
    }
}

void ErrorReporter::setSink(ErrorSink* sink) {
    g_sink = sink;
}
ErrorSink* ErrorReporter::sink() {
    return g_sink;
}

namespace {
void deliver(const ErrorReport& r) {
    if (g_sink) {
        g_sink->report(r);
        return;
    }
    std::fprintf(stderr, "error %d in %s: %s\n", r.number, qPrintable(r.procedure), qPrintable(r.text));
}
} // namespace

void reportError(int number, const QString& procedure, const QString& text) {
    deliver({number, text.isEmpty() ? errorText(number) : text, procedure, false});
}

void reportQuietly(int number, const QString& procedure, const QString& text) {
    deliver({number, text.isEmpty() ? errorText(number) : text, procedure, true});
}

CapturingErrorSink::CapturingErrorSink() : m_previous(ErrorReporter::sink()) {
    ErrorReporter::setSink(this);
}
CapturingErrorSink::~CapturingErrorSink() {
    ErrorReporter::setSink(m_previous);
}
void CapturingErrorSink::report(const ErrorReport& report) {
    m_reports.push_back(report);
}

QStringList CapturingErrorSink::procedures() const {
    QStringList out;
    for (const auto& r : m_reports)
        out << r.procedure;
    return out;
}

LogFileErrorSink::LogFileErrorSink(QString path, ErrorSink* next) : m_path(std::move(path)), m_next(next) {}

void LogFileErrorSink::report(const ErrorReport& report) {
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QFile f(m_path);
    if (f.open(QIODevice::Append | QIODevice::Text)) {
        QTextStream out(&f);
        out << QDateTime::currentDateTime().toString(Qt::ISODate) << '\t' << report.number << '\t'
            << report.procedure << '\t' << report.text << '\n';
    }
    if (m_next)
        m_next->report(report);
}

} // namespace vkm
