#include "transferprogress.h"

namespace vkm::cli {

namespace {
constexpr int kBarWidth = 30;

QString minutes(qint64 ms) {
    const qint64 s = (ms + 999) / 1000;
    return QStringLiteral("%1:%2").arg(s / 60).arg(s % 60, 2, 10, QLatin1Char('0'));
}
} // namespace

TransferProgress::TransferProgress(QTextStream& out, bool terminal) : m_out(out), m_terminal(terminal) {}

TransferProgress::~TransferProgress() {
    endLine();
}

QString TransferProgress::bar(const QString& caption, int value, int maximum, qint64 elapsedMs) {
    const int filled = maximum > 0 ? int(qint64(kBarWidth) * value / maximum) : 0;
    QString text = caption.leftJustified(11) + QStringLiteral(" [") + QString(filled, u'#') +
                   QString(kBarWidth - filled, u'-') + QStringLiteral("] ") +
                   QStringLiteral("%1/%2 bytes").arg(value).arg(maximum);
    if (value > 0 && value < maximum)
        text +=
            QStringLiteral("  ") + minutes(elapsedMs * (maximum - value) / value) + QStringLiteral(" left");
    return text;
}

void TransferProgress::endLine() {
    // A range that stopped short (a customisation write ends early, a failure) still gets
    // its line in a log.
    if (!m_terminal && m_value > 0 && !m_rangeShown) {
        m_out << m_caption << ' ' << m_value << '/' << m_maximum << '\n';
        m_out.flush();
        m_rangeShown = true;
    }
    if (m_lineOpen) {
        m_out << '\n';
        m_out.flush();
        m_lineOpen = false;
    }
}

void TransferProgress::setCaption(const QString& text) {
    // "Reading... 8/768" repeats what the bar shows; a bare caption starts a stage.
    if (text.isEmpty() || text.contains(u'/'))
        return;
    m_caption = text;
    if (text == QLatin1String("Reseting...")) {
        endLine();
        m_out << text << '\n';
        m_out.flush();
    }
}

void TransferProgress::setNote(const QString& text) {
    endLine();
    m_out << text << '\n';
    m_out.flush();
}

void TransferProgress::setProgressMaximum(int maximum) {
    endLine();
    m_maximum = maximum;
    m_value = 0;
    m_rangeShown = false;
    m_clock.start();
}

void TransferProgress::setProgressValue(int value) {
    m_value = value;
    if (m_terminal) {
        m_out << '\r' << bar(m_caption, value, m_maximum, m_clock.elapsed()) << "\x1b[K";
        m_out.flush();
        m_lineOpen = true;
        if (value >= m_maximum && m_maximum > 0)
            endLine();
    } else if (value >= m_maximum && m_maximum > 0) {
        endLine();
    }
}

} // namespace vkm::cli
