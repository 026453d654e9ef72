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
#include "sessiondriver.h"
#include "steptablemodel.h"

#include <QImage>
#include <QTableView>
#include <QToolButton>
#include <algorithm>

namespace {

struct Arguments {
    QString archive;
    QString file; // the user program
    QString comparison;
    QString shot;
    int expected = 0;
};

class Session : public vkm::e2e::SessionBase {
public:
    Session(vkm::Startup& startup, Arguments args) : SessionBase(startup), m_args(std::move(args)) {}

    void run() override {
        compare();
        if (m_result == 0)
            m_startup.mainWindow()->close(); // nothing was changed: no question
    }

private:
    void compare() {
        if (!activateMainWindow())
            return;
        // The user editor's "Open comparative file" with the file chosen.
        if (!m_startup.documents()->documents().user().ReadStep(1, 0, m_args.comparison))
            return fail(QStringLiteral("the comparison program did not open"));
        vkm::StepEditorWindow* user = m_startup.userEditorWindow();
        vkm::StepEditorWindow* comparison = m_startup.comparisonEditorWindow();
        vkm::DifferenceHighlight* diff = m_startup.differences();
        if (!comparison || !comparison->isVisible() || !diff)
            return fail(QStringLiteral("no comparison window"));
        for (vkm::StepEditorWindow* w : {user, comparison}) {
            auto* button = qobject_cast<QToolButton*>(
                w->toolBar()->widgetForAction(diff->action(*w, QStringLiteral("keyDIFF"))));
            if (!button || !button->isEnabled())
                return fail(QStringLiteral("the difference button is missing or disabled"));
            QTest::mouseClick(button, Qt::LeftButton);
        }
        const QString want = vkm::DifferenceHighlight::countText(m_args.expected);
        std::printf("user: %s\ncomparison: %s\n", qPrintable(diff->statusText(*user)),
                    qPrintable(diff->statusText(*comparison)));
        if (diff->statusText(*user) != want || diff->statusText(*comparison) != want)
            return fail(QStringLiteral("expected \"%1\" in both status bars").arg(want));
        // F7 through the window system, as a key on the keyboard: the grid has the focus.
        user->grid()->setFocus();
        user->grid()->setCurrentIndex(user->model()->index(1, 1));
        QTest::keyClick(m_startup.mainWindow()->windowHandle(), Qt::Key_F7);
        const QModelIndex cur = user->grid()->currentIndex();
        const bool onDifference =
            std::any_of(diff->differences().begin(), diff->differences().end(), [&](const vkm::SheetCell& c) {
                return c.row == cur.row() && (c.col == cur.column() || c.col == 0);
            });
        if (!onDifference)
            return fail(
                QStringLiteral("F7 led to %1,%2, which does not differ").arg(cur.row()).arg(cur.column()));
        QApplication::processEvents();
        const QImage picture = m_startup.mainWindow()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        if (!picture.save(m_args.shot, "PNG"))
            return fail(QStringLiteral("cannot write ") + m_args.shot);
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
        if (marked < 200 * m_args.expected)
            fail(QStringLiteral("the picture shows hardly any marked cell"));
    }
    void handleModal(QWidget* modal) override {
        fail(QStringLiteral("unexpected window: %1").arg(modal->windowTitle()));
        modal->close();
    }

    Arguments m_args;
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const vkm::e2e::CommandLine line = vkm::e2e::parseCommandLine(app, {"archive", "shot", "expect"});
    if (line.files.size() != 2 || line.value("shot").isEmpty() || !line.isSet("expect"))
        return vkm::e2e::usage(argv[0], "[--archive PATH] --shot PNG --expect N USER.gsp COMPARISON.gsp");
    const Arguments args{line.value("archive"), line.files[0], line.files[1], line.value("shot"),
                         line.value("expect").toInt()};
    return vkm::e2e::runSession<Session>(app, args, 30);
}
