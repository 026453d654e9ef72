// Start-up time of the editor against an empty Qt main window started the same way.
//
// Both are separate processes that show their main window on the offscreen platform,
// paint it once, report the moment and quit (no image is encoded: that would time the
// encoder, not the start): the editor with its archive unpacked and catalogues read, the
// baseline a bare QMainWindow (this executable in its child mode). The medians of several
// runs are compared; the editor should take at most one and a half times the baseline.
// A second baseline is a main window holding nothing but a plain QTableView over a 33 x 22
// model of short texts, the size of the step grid: what Qt itself needs to show any grid
// (the font database, the headers, the first paint of every cell), against which the
// editor's own share of the start-up shows.
//
//   bench_startup [OTHER_EDITOR...]   also times other editor binaries in the same rounds

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMainWindow>
#include <QProcess>
#include <QScreen>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {

constexpr int kRuns = 9;

qint64 steadyNow() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

int baselineChild(int argc, char** argv, bool withTable) {
    QApplication app(argc, argv);
    QMainWindow window;
    if (withTable) {
        auto* table = new QTableView;
        auto* model = new QStandardItemModel(33, 22, table);
        for (int r = 0; r < 33; ++r)
            for (int c = 0; c < 22; ++c)
                model->setItem(r, c, new QStandardItem(QString::number(r * 100 + c)));
        table->setModel(model);
        window.setCentralWidget(table);
    }
    window.setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
    window.show();
    QTimer::singleShot(0, &app, [&] {
        QApplication::processEvents(); // the shown window's first paint, as the editor does
        std::printf("shown %lld\n", static_cast<long long>(steadyNow()));
        std::fflush(stdout);
        app.exit(0);
    });
    return app.exec();
}

// Milliseconds from starting the process to the moment it reports its window shown (the
// "shown <steady clock ns>" line both programs print), so that neither one's shut-down
// counts.
double runOnce(const QString& program, const QStringList& args, const QProcessEnvironment& env) {
    QProcess p;
    p.setProcessEnvironment(env);
    p.setProcessChannelMode(QProcess::SeparateChannels);
    const qint64 start = steadyNow();
    p.start(program, args);
    if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0) {
        std::fprintf(stderr, "run of %s failed\n", qPrintable(program));
        return -1;
    }
    const QList<QByteArray> lines = p.readAllStandardOutput().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("shown "))
            return double(line.mid(6).toLongLong() - start) / 1e6;
    }
    std::fprintf(stderr, "%s did not report its window shown\n", qPrintable(program));
    return -1;
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 2 && qstrcmp(argv[1], "--baseline-child") == 0)
        return baselineChild(1, argv, false);
    if (argc == 2 && qstrcmp(argv[1], "--table-child") == 0)
        return baselineChild(1, argv, true);

    QCoreApplication app(argc, argv);
    QTemporaryDir home;
    // The runtime folder of a desktop session (/run/user/<uid>) is a tmpfs; the editor's
    // single-instance lock lives there and is synced to its disk when it is taken, which
    // costs nothing on a tmpfs and milliseconds on a disk. /dev/shm stands in for it.
    QTemporaryDir runtime(QFileInfo(QStringLiteral("/dev/shm")).isWritable()
                              ? QStringLiteral("/dev/shm/vkm-bench-XXXXXX")
                              : home.filePath(QStringLiteral("run-XXXXXX")));
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"),
               QStringLiteral("offscreen:configfile=" VKM_SOURCE_DIR "/tests/support/screens.json"));
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));
    env.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), runtime.path());
    env.insert(QStringLiteral("VKM_ARCHIVE"), QStringLiteral(VKM_BIN_DIR "/VKM.e"));

    // The editor of this build, then any other editor binaries named on the command line
    // (an earlier build, say): all are timed in the same rounds as the baseline, so that
    // their ratios compare under the same load.
    QStringList editors{QStringLiteral(VKM_BIN_DIR "/vkmstep")};
    for (const QString& extra : app.arguments().mid(1))
        editors << QFileInfo(extra).absoluteFilePath();
    const QStringList editorArgs{QStringLiteral("--exit-when-shown")};
    const QString self = QCoreApplication::applicationFilePath();
    const QStringList baseArgs{QStringLiteral("--baseline-child")};
    const QStringList tableArgs{QStringLiteral("--table-child")};

    // One warm-up each: the first start of an editor also creates every setting.
    for (const QString& editor : editors)
        if (runOnce(editor, editorArgs, env) < 0)
            return 1;
    if (runOnce(self, baseArgs, env) < 0 || runOnce(self, tableArgs, env) < 0)
        return 1;
    std::vector<std::vector<double>> editorTimes(editors.size());
    std::vector<double> baseTimes;
    std::vector<double> tableTimes;
    for (int i = 0; i < kRuns; ++i) {
        for (qsizetype k = 0; k < editors.size(); ++k) {
            const double e = runOnce(editors[k], editorArgs, env);
            if (e < 0)
                return 1;
            editorTimes[k].push_back(e);
        }
        const double b = runOnce(self, baseArgs, env);
        if (b < 0)
            return 1;
        baseTimes.push_back(b);
        const double t = runOnce(self, tableArgs, env);
        if (t < 0)
            return 1;
        tableTimes.push_back(t);
    }
    const double b = median(baseTimes);
    const double t = median(tableTimes);
    for (qsizetype k = 0; k < editors.size(); ++k) {
        const double e = median(editorTimes[k]);
        if (k > 0)
            std::printf("-- %s\n", qPrintable(editors[k]));
        std::printf(
            "start-up to main window shown (median of %d): editor %.1f ms, empty main window %.1f ms\n",
            kRuns, e, b);
        std::printf("ratio %.2f (target at most 1.50)\n", e / b);
        std::printf("plain 33 x 22 table window %.1f ms: editor / table %.2f, table / empty window %.2f\n", t,
                    e / t, t / b);
    }
    return 0;
}
