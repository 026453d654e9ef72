// Comparing two programs in the editor as a user does: starts the editor the way vkmstep does
// with the user program of the command line, opens the comparison program beside it, turns
// the difference marks on in both windows with their toolbar buttons, walks to the first
// difference with F7 and saves a picture of the main window.
//
//   e2e_compare_session [--archive PATH] --shot PNG --expect N USER.gsp COMPARISON.gsp
//
// Prints "user: TEXT" and "comparison: TEXT" with what each window's status bar says. Exit
// code 0: both windows counted N differing cells, F7 reached a marked cell and the picture was
// written; otherwise "FAIL: ..." and a non-zero code.
#include "differencehighlight.h"
#include "documentcontroller.h"
#include "finpmemo.h"
#include "mainwindow.h"
#include "startup.h"
#include "stepeditorwindow.h"
#include "steptablemodel.h"
#include "steptoolbar.h"

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QImage>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <algorithm>
#include <cstdio>

namespace {

int fail(const QString& why) {
    std::fprintf(stderr, "FAIL: %s\n", qPrintable(why));
    return 1;
}

int session(vkm::Startup& startup, const QString& comparisonFile, const QString& shot, int expected) {
    QWidget* main = startup.mainWindow();
    main->activateWindow();
    if (!QTest::qWaitForWindowActive(main, 5000))
        return fail(QStringLiteral("the main window never became active"));
    // The user editor's "Open comparative file" with the file chosen.
    if (!startup.documents()->documents().user().ReadStep(1, 0, comparisonFile))
        return fail(QStringLiteral("the comparison program did not open"));
    vkm::StepEditorWindow* user = startup.userEditorWindow();
    vkm::StepEditorWindow* comparison = startup.comparisonEditorWindow();
    vkm::DifferenceHighlight* diff = startup.differences();
    if (!comparison || !comparison->isVisible() || !diff)
        return fail(QStringLiteral("no comparison window"));
    for (vkm::StepEditorWindow* w : {user, comparison}) {
        auto* button = qobject_cast<QToolButton*>(
            w->toolBar()->widgetForAction(diff->action(*w, QStringLiteral("keyDIFF"))));
        if (!button || !button->isEnabled())
            return fail(QStringLiteral("the difference button is missing or disabled"));
        QTest::mouseClick(button, Qt::LeftButton);
    }
    const QString want = vkm::DifferenceHighlight::countText(expected);
    std::printf("user: %s\ncomparison: %s\n", qPrintable(diff->statusText(*user)),
                qPrintable(diff->statusText(*comparison)));
    if (diff->statusText(*user) != want || diff->statusText(*comparison) != want)
        return fail(QStringLiteral("expected \"%1\" in both status bars").arg(want));
    // F7 through the window system, as a key on the keyboard: the grid has the focus.
    user->grid()->setFocus();
    user->grid()->setCurrentIndex(user->model()->index(1, 1));
    QTest::keyClick(main->windowHandle(), Qt::Key_F7);
    const QModelIndex cur = user->grid()->currentIndex();
    const bool onDifference =
        std::any_of(diff->differences().begin(), diff->differences().end(), [&](const vkm::SheetCell& c) {
            return c.row == cur.row() && (c.col == cur.column() || c.col == 0);
        });
    if (!onDifference)
        return fail(
            QStringLiteral("F7 led to %1,%2, which does not differ").arg(cur.row()).arg(cur.column()));
    QApplication::processEvents();
    const QImage picture = main->grab().toImage().convertToFormat(QImage::Format_RGB32);
    if (!picture.save(shot, "PNG"))
        return fail(QStringLiteral("cannot write ") + shot);
    // The marks are seen: pixels of the mark colour laid over the cell colours (amber over
    // white, the output green or the disabled grey all keep red high and blue low).
    int marked = 0;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            marked += qRed(line[x]) >= 0xE0 && qGreen(line[x]) >= 0x90 && qGreen(line[x]) <= 0xD0 &&
                      qBlue(line[x]) <= 0x90;
    }
    std::printf("marked pixels: %d\n", marked);
    if (marked < 200 * expected)
        return fail(QStringLiteral("the picture shows hardly any marked cell"));
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption archive(QStringLiteral("archive"), QStringLiteral("Setting archive."),
                                     QStringLiteral("PATH"));
    const QCommandLineOption shot(QStringLiteral("shot"), QStringLiteral("Picture to write."),
                                  QStringLiteral("PNG"));
    const QCommandLineOption expect(QStringLiteral("expect"), QStringLiteral("Differences expected."),
                                    QStringLiteral("N"));
    parser.addOptions({archive, shot, expect});
    parser.process(app);
    const QStringList files = parser.positionalArguments();
    if (files.size() != 2 || parser.value(shot).isEmpty() || !parser.isSet(expect)) {
        std::fprintf(stderr, "usage: e2e_compare_session [--archive PATH] --shot PNG --expect N USER.gsp "
                             "COMPARISON.gsp\n");
        return 2;
    }
    vkm::StartupOptions options;
    options.archiveOverride = parser.value(archive);
    options.commandLine = QLatin1Char('"') + files[0] + QLatin1Char('"');
    vkm::Startup startup(options);
    if (!startup.run())
        return fail(QStringLiteral("the editor did not start"));
    int code = 0;
    QTimer::singleShot(0, &app, [&] {
        code = session(startup, files[1], parser.value(shot), parser.value(expect).toInt());
        startup.mainWindow()->close(); // nothing was changed: no question
        if (startup.mainWindow()->isVisible()) {
            code = fail(QStringLiteral("the editor did not close"));
            app.exit(code);
        }
    });
    const int rc = app.exec();
    return code != 0 ? code : rc;
}
