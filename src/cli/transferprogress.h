#pragma once

#include "link/commtransfer.h"

#include <QElapsedTimer>
#include <QTextStream>

namespace vkm::cli {

// The progress of a transfer on the command line. On a terminal: one bar redrawn in
// place, with the bytes done, the total and the time left. Otherwise (a log, a pipe): one
// line per range once it is complete, and the reset.
class TransferProgress : public TransferDisplay {
public:
    TransferProgress(QTextStream& out, bool terminal);
    ~TransferProgress() override;

    void setCaption(const QString& text) override;
    void setNote(const QString& text) override;
    void setProgressMaximum(int maximum) override;
    void setProgressValue(int value) override;

    // The bar as drawn for a value (public for its test).
    static QString bar(const QString& caption, int value, int maximum, qint64 elapsedMs);

private:
    void endLine();

    QTextStream& m_out;
    bool m_terminal;
    QString m_caption; // the caption of the range, without its counts
    int m_maximum = 0;
    int m_value = 0;
    bool m_lineOpen = false;
    bool m_rangeShown = false; // its line is in the log
    QElapsedTimer m_clock;
};

} // namespace vkm::cli
