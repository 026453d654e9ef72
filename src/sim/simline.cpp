#include "simline.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

namespace vkm::sim {

namespace {

volatile std::sig_atomic_t g_stop = 0;

void onSignal(int) {
    g_stop = 1;
}

using Nanos = long long;

Nanos now() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return Nanos(ts.tv_sec) * 1000000000LL + ts.tv_nsec;
}

speed_t speedOf(int baud) {
    switch (baud) {
    case 1200:
        return B1200;
    case 2400:
        return B2400;
    case 4800:
        return B4800;
    case 19200:
        return B19200;
    case 38400:
        return B38400;
    case 57600:
        return B57600;
    case 115200:
        return B115200;
    default:
        return B9600;
    }
}

bool makeRaw(int fd, int baud) {
    termios t{};
    if (tcgetattr(fd, &t) != 0)
        return false;
    cfmakeraw(&t);
    t.c_cflag |= CLOCAL | CREAD;
    t.c_cflag &= ~(CSTOPB | PARENB | CRTSCTS);
    t.c_cc[VMIN] = 0;
    t.c_cc[VTIME] = 0;
    if (baud > 0) {
        cfsetispeed(&t, speedOf(baud));
        cfsetospeed(&t, speedOf(baud));
    }
    return tcsetattr(fd, TCSANOW, &t) == 0;
}

struct TimedByte {
    char byte;
    Nanos at; // when its last bit is on the line
};

} // namespace

SimLine::SimLine(VirtualMachine& machine, Options options)
    : m_machine(machine), m_options(std::move(options)) {}

SimLine::~SimLine() {
    close();
}

bool SimLine::open() {
    if (m_options.device.isEmpty()) {
        m_fd = posix_openpt(O_RDWR | O_NOCTTY);
        if (m_fd < 0 || grantpt(m_fd) != 0 || unlockpt(m_fd) != 0) {
            m_error =
                QStringLiteral("cannot create a pseudo-terminal: ") + QString::fromLocal8Bit(strerror(errno));
            return false;
        }
        m_path = QString::fromLocal8Bit(ptsname(m_fd));
        m_slaveFd = ::open(ptsname(m_fd), O_RDWR | O_NOCTTY);
        // Raw before any program opens it: no echo, no line editing, no CR/LF changes.
        if (m_slaveFd < 0 || !makeRaw(m_slaveFd, m_options.baudRate)) {
            m_error =
                QStringLiteral("cannot set up %1: %2").arg(m_path, QString::fromLocal8Bit(strerror(errno)));
            return false;
        }
    } else {
        m_path = m_options.device;
        m_fd = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_NOCTTY);
        if (m_fd < 0 || !makeRaw(m_fd, m_options.baudRate)) {
            m_error =
                QStringLiteral("cannot open %1: %2").arg(m_path, QString::fromLocal8Bit(strerror(errno)));
            return false;
        }
    }
    fcntl(m_fd, F_SETFL, fcntl(m_fd, F_GETFL) | O_NONBLOCK);
    if (!m_options.link.isEmpty()) {
        const QByteArray link = QFile::encodeName(m_options.link);
        const QFileInfo existing(m_options.link);
        if (existing.isSymLink())
            ::unlink(link.constData());
        if (::symlink(QFile::encodeName(m_path).constData(), link.constData()) != 0) {
            m_error = QStringLiteral("cannot make the link %1: %2")
                          .arg(m_options.link, QString::fromLocal8Bit(strerror(errno)));
            return false;
        }
        m_linkMade = true;
    }
    return true;
}

void SimLine::close() {
    if (m_linkMade) {
        // Only our own link: another simulator may have taken the name meanwhile.
        if (QFileInfo(m_options.link).symLinkTarget() == m_path)
            ::unlink(QFile::encodeName(m_options.link).constData());
        m_linkMade = false;
    }
    if (m_slaveFd >= 0)
        ::close(m_slaveFd);
    if (m_fd >= 0)
        ::close(m_fd);
    m_slaveFd = m_fd = -1;
}

int SimLine::run() {
    struct sigaction sa {};
    sa.sa_handler = onSignal;
    sigemptyset(&sa.sa_mask);
    for (int sig : {SIGINT, SIGTERM, SIGHUP})
        sigaction(sig, &sa, nullptr);
    // Signals arrive only inside ppoll, so none is lost between the check and the wait.
    sigset_t blocked, waitMask;
    sigemptyset(&blocked);
    for (int sig : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&blocked, sig);
    sigprocmask(SIG_BLOCK, &blocked, &waitMask);

    const bool paced = m_options.pace && m_options.baudRate > 0;
    const Nanos byteTime = paced ? 10LL * 1000000000LL / m_options.baudRate : 0;
    std::deque<TimedByte> incoming; // request bytes with the time each completes
    std::deque<TimedByte> outgoing; // answer bytes with the time each may leave
    Nanos rxFree = 0;               // when the receiving line is free again
    Nanos txFree = 0;

    while (!g_stop) {
        const Nanos t = now();
        // Frames whose line end has arrived.
        for (;;) {
            auto lf = std::find_if(incoming.begin(), incoming.end(),
                                   [](const TimedByte& b) { return b.byte == '\n'; });
            if (lf == incoming.end() || lf->at > t)
                break;
            QByteArray frame;
            for (auto it = incoming.begin(); it != lf; ++it)
                frame += it->byte;
            const Nanos arrived = lf->at;
            incoming.erase(incoming.begin(), lf + 1);
            if (frame.endsWith('\r'))
                frame.chop(1);
            const VirtualMachine::Response r = m_machine.handleFrame(frame);
            if (r.reset && onReset)
                onReset();
            if (r.hangUp) {
                close();
                return 0;
            }
            for (char c : r.answer) {
                txFree = std::max(txFree, arrived) + byteTime;
                outgoing.push_back({c, txFree});
            }
        }
        // Answer bytes that are due.
        QByteArray due;
        while (!outgoing.empty() && outgoing.front().at <= t) {
            due += outgoing.front().byte;
            outgoing.pop_front();
        }
        if (!due.isEmpty() && ::write(m_fd, due.constData(), size_t(due.size())) < 0 && errno != EAGAIN) {
            m_error = QStringLiteral("write: ") + QString::fromLocal8Bit(strerror(errno));
            close();
            return 1;
        }
        // Sleep until the next byte is due or something arrives.
        Nanos next = -1;
        if (!outgoing.empty())
            next = outgoing.front().at;
        auto lf =
            std::find_if(incoming.begin(), incoming.end(), [](const TimedByte& b) { return b.byte == '\n'; });
        if (lf != incoming.end())
            next = next < 0 ? lf->at : std::min(next, lf->at);
        timespec timeout{};
        timespec* wait = nullptr;
        if (next >= 0) {
            const Nanos d = std::max<Nanos>(0, next - now());
            timeout.tv_sec = time_t(d / 1000000000LL);
            timeout.tv_nsec = long(d % 1000000000LL);
            wait = &timeout;
        }
        pollfd p{m_fd, POLLIN, 0};
        const int ready = ppoll(&p, 1, wait, &waitMask);
        if (ready < 0) {
            if (errno == EINTR)
                continue;
            m_error = QStringLiteral("poll: ") + QString::fromLocal8Bit(strerror(errno));
            break;
        }
        if (ready == 0)
            continue;
        if (p.revents & POLLIN) {
            char buf[512];
            const ssize_t n = ::read(m_fd, buf, sizeof buf);
            const Nanos at = now();
            for (ssize_t i = 0; i < n; ++i) {
                rxFree = std::max(rxFree, at) + byteTime;
                incoming.push_back({buf[i], rxFree});
            }
            if (n < 0 && errno != EAGAIN && errno != EINTR) {
                m_error = QStringLiteral("read: ") + QString::fromLocal8Bit(strerror(errno));
                break;
            }
        } else if (p.revents & (POLLHUP | POLLERR)) {
            // A device that went away; a pseudo-terminal never does (we hold its far end).
            m_error = QStringLiteral("the line was closed");
            break;
        }
    }
    close();
    return m_error.isEmpty() ? 0 : 1;
}

} // namespace vkm::sim
