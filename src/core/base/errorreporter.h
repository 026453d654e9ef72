#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace vkm {

// Error numbers of the common error report. The numbers follow the run-time error
// numbers the machine tools have always used, so that a report reads the same.
enum ErrorCode {
    ErrInvalidCall = 5,
    ErrOverflow = 6,
    ErrSubscript = 9,
    ErrTypeMismatch = 13,
    ErrFileNotFound = 53,
    ErrBadFileMode = 54,
    ErrIO = 57,
    ErrDiskFull = 61,
    ErrInputPastEnd = 62,
    ErrPermissionDenied = 70,
    ErrPathAccess = 75,
    ErrPathNotFound = 76,
    ErrDuplicateKey = 457,
    ErrCancelled = 32755, // the user cancelled a common dialog
};

// Standard text of an error number ("" for numbers without one).
QString errorText(int number);

struct ErrorReport {
    int number = 0;
    QString text;
    QString procedure;
    // Kept in the log only, never shown in a box: a fault whose consequence the user is
    // told about by a message of its own (a damaged archive member, named by the
    // presence check as a missing file).
    bool quiet = false;
};

// Receives the error reports of every operation: number, text, procedure name.
class ErrorSink {
public:
    virtual ~ErrorSink() = default;
    virtual void report(const ErrorReport& report) = 0;
};

// The error reporter. Operations call reportError(); start-up installs the sink that
// shows a dialog and appends to the per-user log, tests install a capturing one.
class ErrorReporter {
public:
    static void setSink(ErrorSink* sink); // nullptr: write to stderr only
    static ErrorSink* sink();
};

void reportError(int number, const QString& procedure, const QString& text = {});
// The same report, marked quiet (see ErrorReport::quiet).
void reportQuietly(int number, const QString& procedure, const QString& text = {});

// Collects reports while it lives and restores the previous sink afterwards.
class CapturingErrorSink : public ErrorSink {
public:
    CapturingErrorSink();
    ~CapturingErrorSink() override;
    void report(const ErrorReport& report) override;
    const std::vector<ErrorReport>& reports() const { return m_reports; }
    QStringList procedures() const;
    void clear() { m_reports.clear(); }

private:
    ErrorSink* m_previous;
    std::vector<ErrorReport> m_reports;
};

// Appends every report as one line to a log file (timestamp, number, procedure, text).
class LogFileErrorSink : public ErrorSink {
public:
    explicit LogFileErrorSink(QString path, ErrorSink* next = nullptr);
    void report(const ErrorReport& report) override;
    QString path() const { return m_path; }

private:
    QString m_path;
    ErrorSink* m_next;
};

} // namespace vkm
