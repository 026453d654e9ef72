// The easy customisation through the main window, against vkm-sim on a real serial port:
// the area is read, a function is typed in the window, saved to the machine (read again
// first, then written), and the machine's memory differs in that function's byte alone.
#include "appcontext.h"
#include "base/messages.h"
#include "base/scriptedprompter.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"
#include "customizeeasycontroller.h"
#include "customizeeasymodel.h"
#include "documentcontroller.h"
#include "fcustomizeeasy.h"
#include "finpmemo.h"
#include "fselkino.h"
#include "functionchooser.h"
#include "guitestsupport.h"
#include "mainwindow.h"
#include "simprocess.h"
#include "startuprig.h"
#include "stepeditorwindow.h"
#include "testsupport.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRegularExpression>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

const QString kSettingDir = QStringLiteral(VKM_SOURCE_DIR "/data/setting");

class Customize : public ::testing::Test, protected StartupRig {
protected:
    void SetUp() override {
        startup = std::make_unique<Startup>(options);
        ASSERT_TRUE(startup->run());
        window = startup->mainWindow();
        startup->documents()->machineLink().timing = {300, 20};
        memory = machineMemory();
        memoryFile = scratch.write(QStringLiteral("memory.bin"), memory);
    }
    void TearDown() override { EXPECT_EQ(prompter.pendingAnswers(), 0u); }

    // The machine's memory: every byte of the customisation area holds something, the
    // functions are ones the catalogues know, the identification is the series', and the
    // rest of the memory is filled too.
    static QByteArray machineMemory() {
        QByteArray m(8192, '\0');
        for (int n = 0; n < m.size(); ++n)
            m[n] = char((n * 53 + 7) & 0xFF);
        CCustomInps inps;
        CCustomOuts outs;
        inps.ReadSet04e(kSettingDir);
        outs.ReadSet05e(kSettingDir);
        for (const CCustomInp& t : inps)
            m[t.KinoAdrs] = char(t.KinoAdrs % 9); // functions 0 to 8 of Set06.e
        for (const CCustomOut& t : outs)
            m[t.KinoAdrs] = char(t.KinoAdrs % 7); // functions 0 to 6 of Set07.e
        m.replace(0x0100, 3, QByteArray::fromHex("010520"));
        return m;
    }
    bool startSim(const QStringList& extra = {}) {
        if (!sim.start(QStringList{"--memory", memoryFile} + extra))
            return false;
        store.settings->set(keys::CommPort, sim.device());
        return true;
    }
    // The frames the main window's area shows (a frame left behind by its window counts).
    int visibleFrames() const {
        int n = 0;
        for (QMdiSubWindow* frame : window->mdiArea()->findChildren<QMdiSubWindow*>())
            n += frame->isVisible() ? 1 : 0;
        return n;
    }
    bool userFrameVisible() const {
        QWidget* frame = startup->userEditorWindow()->parentWidget();
        return frame && frame->isVisible() && startup->userEditorWindow()->isVisible();
    }
    fCustomizeEasy* openWindow() {
        window->toolAction(QStringLiteral("keyCUSTOMIZEEASY"))->trigger();
        return startup->customizeEasy()->window();
    }
    int rowOf(fCustomizeEasy* w, const char* location) {
        for (int r = 0; r < w->sheet().rowCount(); ++r)
            if (w->sheet().row(r).location == QLatin1String(location))
                return r;
        return -1;
    }
    // Types text into the function cell of the row, as a user does: the first key opens
    // the cell, the rest go to the cell editor, Enter ends it.
    void type(fCustomizeEasy* w, int row, const QString& text) {
        w->grid()->setCurrentIndex(w->grid()->model()->index(row, CustomizeEasyModel::ColFunction));
        w->grid()->setFocus();
        QTest::keyClick(w->grid(), text.at(0).toLatin1());
        const QModelIndex cell = w->grid()->model()->index(row, CustomizeEasyModel::ColFunction);
        auto* editor = qobject_cast<QLineEdit*>(w->grid()->indexWidget(cell));
        ASSERT_NE(editor, nullptr) << "the first key opens the cell";
        ASSERT_TRUE(editor->isVisible());
        QTest::keyClicks(editor, text.mid(1));
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<Startup> startup;
    MainWindow* window = nullptr;
    Scratch scratch;
    QByteArray memory;
    QString memoryFile;
    SimProcess sim;
};

TEST_F(Customize, ATypedFunctionSavedToTheMachineChangesOnlyItsByte) {
    ASSERT_TRUE(startSim());
    fCustomizeEasy* w = openWindow();
    ASSERT_NE(w, nullptr) << prompter.texts().join(" | ").toStdString();
    EXPECT_TRUE(prompter.shown().empty());
    EXPECT_EQ(w->windowTitle(), "Customize ***");
    auto* frame = qobject_cast<QMdiSubWindow*>(w->parentWidget());
    ASSERT_NE(frame, nullptr);
    EXPECT_TRUE(window->mdiArea()->subWindowList().contains(frame));
    EXPECT_TRUE(frame->isVisible());

    // Inputs first, then outputs, each in its colour.
    QAbstractItemModel* model = w->grid()->model();
    ASSERT_EQ(model->rowCount(), 22);
    EXPECT_EQ(model->index(0, 0).data().toString(), "IN01");
    EXPECT_EQ(model->index(12, 0).data().toString(), "OUT01");
    EXPECT_EQ(model->index(0, 1).data(Qt::BackgroundRole).value<QColor>(), QColor(255, 228, 225));
    EXPECT_EQ(model->index(12, 1).data(Qt::BackgroundRole).value<QColor>(), QColor(224, 255, 255));
    // IN03's function lives at 1808 - 1792 = 16; the memory holds 16 % 9 = 7 there, "SF2".
    const int in03 = rowOf(w, "IN03");
    EXPECT_EQ(model->index(in03, 1).data().toString(), "SF2 ");

    // A text no catalogue entry has is refused, and the cell keeps its function.
    type(w, in03, QStringLiteral("zz"));
    EXPECT_EQ(prompter.numbers(), std::vector<int>{67});
    EXPECT_EQ(model->index(in03, 1).data().toString(), "SF2 ");
    EXPECT_FALSE(w->IsChanged());

    prompter.clear();
    type(w, in03, QStringLiteral("gp2"));
    EXPECT_TRUE(prompter.shown().empty());
    EXPECT_EQ(model->index(in03, 1).data().toString(), "GP2 ");
    EXPECT_TRUE(w->IsChanged());
    const QColor unmarked = model->index(0, 0).data(Qt::BackgroundRole).value<QColor>();
    EXPECT_NE(model->index(in03, 0).data(Qt::BackgroundRole).value<QColor>(), unmarked);
    if (qEnvironmentVariableIsSet("VKM_CUSTOM_SHOT"))
        window->grab().save(qEnvironmentVariable("VKM_CUSTOM_SHOT"));

    // Save: the power question, the area read again, then written.
    const int framesBefore = int(sim.frames().size());
    // What the transfer dialogs say under their progress while they talk to the machine.
    QStringList notes;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        if (auto* label =
                QApplication::activeModalWidget()
                    ? QApplication::activeModalWidget()->findChild<QLabel*>(QStringLiteral("Label2"))
                    : nullptr)
            if (!label->text().isEmpty() && !notes.contains(label->text()))
                notes << label->text();
    });
    watch.start(2);
    prompter.queueAnswer(Answer::Ok);
    w->action(QStringLiteral("keySAVE"))->trigger();
    watch.stop();
    EXPECT_EQ(notes, QStringList{"Reading data before save"});
    EXPECT_EQ(prompter.texts(), QStringList{LoadMessageText(160)});
    EXPECT_FALSE(w->IsChanged());
    EXPECT_EQ(model->index(in03, 0).data(Qt::BackgroundRole).value<QColor>(), unmarked);
    ASSERT_TRUE(sim.waitForFrames(framesBefore + 1 + 96 + 1 + 96 + 1));
    const QStringList frames = sim.frames().mid(framesBefore);
    EXPECT_EQ(frames.filter(QRegularExpression("^R")).size(), 1 + 96 + 1);
    EXPECT_EQ(frames.filter(QRegularExpression("^W")).size(), 96) << "the customisation area only";
    EXPECT_EQ(frames.last(), "C00003F");

    sim.stop();
    const QByteArray after = readAll(memoryFile);
    ASSERT_EQ(after.size(), 8192);
    QList<int> changed;
    for (int n = 0; n < after.size(); ++n)
        if (after.at(n) != memory.at(n))
            changed << n;
    EXPECT_EQ(changed, QList<int>{16});
    EXPECT_EQ(after.at(16), 65) << "GP2 is function 65 of Set06.e";
    EXPECT_TRUE(errors.reports().empty());
}

TEST_F(Customize, AFailedOrCancelledReadOpensNoWindow) {
    // No machine on the line.
    store.settings->set(keys::CommPort, scratch.file(QStringLiteral("no-such-port")));
    EXPECT_EQ(openWindow(), nullptr);
    EXPECT_EQ(prompter.texts(),
              QStringList{"Unable to connect. Check port setting. Or the port is occupied."});

    // A machine that does not answer: Cancel at the time-out.
    ASSERT_TRUE(startSim({"--fault", "silent:1"}));
    prompter.clear();
    prompter.queueAnswer(Answer::Cancel);
    EXPECT_EQ(openWindow(), nullptr);
    EXPECT_EQ(prompter.texts(),
              (QStringList{"Timer over (no response for machine check)", "Failed to read."}));
    EXPECT_TRUE(window->mdiArea()->findChildren<fCustomizeEasy*>().isEmpty());
}

TEST_F(Customize, AnOpenWindowAsksBeforeAnotherReadAndStaysWhenItFails) {
    ASSERT_TRUE(startSim());
    const int frames0 = visibleFrames();
    fCustomizeEasy* w = openWindow();
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(visibleFrames(), frames0 + 1);
    type(w, 0, QStringLiteral("fs"));
    ASSERT_TRUE(w->IsChanged());

    // Cancel at the window's question: nothing is read.
    const int frames = int(sim.frames().size());
    prompter.queueAnswer(Answer::Cancel);
    EXPECT_EQ(openWindow(), w);
    EXPECT_EQ(prompter.numbers(), std::vector<int>{143});
    EXPECT_EQ(sim.frames().size(), frames);

    // No, and the machine has gone: the window stays with its change.
    store.settings->set(keys::CommPort, scratch.file(QStringLiteral("gone")));
    prompter.clear();
    prompter.queueAnswer(Answer::No);
    EXPECT_EQ(openWindow(), w);
    EXPECT_EQ(prompter.texts().last(), "Unable to connect. Check port setting. Or the port is occupied.");
    EXPECT_TRUE(w->IsChanged());
    EXPECT_EQ(w->sheet().row(0).digital, "FS  ");

    // No, and a machine that answers: a fresh window on what was read.
    SimProcess again;
    ASSERT_TRUE(again.start({"--memory", memoryFile}));
    store.settings->set(keys::CommPort, again.device());
    prompter.clear();
    prompter.queueAnswer(Answer::No);
    fCustomizeEasy* fresh = openWindow();
    ASSERT_NE(fresh, nullptr);
    EXPECT_FALSE(fresh->IsChanged());
    EXPECT_EQ(fresh->sheet().row(0).digital, " NO") << "IN01's function is 0 in the memory";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(window->mdiArea()->findChildren<fCustomizeEasy*>(), QList<fCustomizeEasy*>{fresh})
        << "the old window is gone";
    EXPECT_EQ(visibleFrames(), frames0 + 1) << "the old window's frame went with it";
    for (QMdiSubWindow* frame : window->mdiArea()->findChildren<QMdiSubWindow*>())
        EXPECT_NE(frame->widget(), nullptr) << "no empty frame";
}

TEST_F(Customize, AFileThatCannotBeLoadedOpensNoWindow) {
    // The read gives a file that holds no transfer text.
    const QString bad = scratch.write(QStringLiteral("bad.txt"), QByteArray("this is not transfer text\r\n"));
    std::vector<int> reads;
    startup->customizeEasy()->setMachineRead([&](int kind) {
        reads.push_back(kind);
        return bad;
    });
    const int frames = visibleFrames();
    EXPECT_EQ(openWindow(), nullptr);
    EXPECT_EQ(reads, std::vector<int>{0});
    ASSERT_EQ(prompter.numbers(), std::vector<int>{4});
    const ScriptedPrompter::Shown& last = prompter.shown().back();
    EXPECT_EQ(last.number, 4);
    EXPECT_EQ(last.style, 1);
    EXPECT_EQ(last.a1, "CUSTOMIZE");
    EXPECT_EQ(last.text, "Failed to read data.\n\nCUSTOMIZE");
    EXPECT_EQ(startup->customizeEasy()->window(), nullptr);
    EXPECT_TRUE(window->mdiArea()->findChildren<fCustomizeEasy*>().isEmpty());
    EXPECT_EQ(visibleFrames(), frames);
}

// The customisation window and the program both changed: a Cancel at either question keeps
// every window with its change, and the program's question comes only after the window's.
TEST_F(Customize, ClosingTheApplicationAsksEveryQuestionBeforeAnyWindowCloses) {
    ASSERT_TRUE(startSim());
    fCustomizeEasy* w = openWindow();
    ASSERT_NE(w, nullptr);
    type(w, 0, QStringLiteral("fs"));
    ASSERT_TRUE(w->IsChanged());
    auto* frame = qobject_cast<QMdiSubWindow*>(w->parentWidget());
    ASSERT_NE(frame, nullptr);
    ASSERT_TRUE(userFrameVisible());
    StepDocument& program = startup->documents()->documents().user();
    program.setChanged(true);

    // Cancel at the customisation window's question: every window stays, and the program's
    // question is not asked.
    prompter.clear();
    prompter.queueAnswer(Answer::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(prompter.numbers(), std::vector<int>{143});
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(userFrameVisible());
    EXPECT_TRUE(frame->isVisible());
    EXPECT_TRUE(w->isVisible());
    EXPECT_TRUE(w->IsChanged());
    EXPECT_TRUE(program.IsChanged());
    // The application is not closing: the user editor still refuses to close on its own.
    prompter.clear();
    EXPECT_FALSE(startup->userEditorWindow()->parentWidget()->close());
    EXPECT_EQ(prompter.numbers(), std::vector<int>{62});
    EXPECT_TRUE(userFrameVisible());

    // No there, Cancel at the program's: the customisation window keeps its change.
    prompter.clear();
    prompter.queueAnswer(Answer::No);
    prompter.queueAnswer(Answer::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(prompter.numbers(), (std::vector<int>{143, 13}));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(userFrameVisible());
    EXPECT_TRUE(frame->isVisible());
    EXPECT_TRUE(w->IsChanged());
    EXPECT_EQ(w->sheet().row(0).digital, "FS  ");
    EXPECT_TRUE(program.IsChanged());

    // A later close goes through.
    prompter.clear();
    prompter.queueAnswer(Answer::No);
    prompter.queueAnswer(Answer::No);
    EXPECT_TRUE(window->close());
    EXPECT_EQ(prompter.numbers(), (std::vector<int>{143, 13}));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Customize, LocateInputsFirstLeavesTheSettingWhenTheCustomisationWindowStays) {
    int restarts = 0;
    window->setRestartHook([&] { ++restarts; });
    ASSERT_TRUE(startSim());
    fCustomizeEasy* w = openWindow();
    ASSERT_NE(w, nullptr);
    type(w, 0, QStringLiteral("fs"));

    prompter.clear();
    prompter.queueAnswer(Answer::Cancel);
    window->optionItem(3)->trigger();
    EXPECT_EQ(prompter.numbers(), (std::vector<int>{113, 143}));
    EXPECT_FALSE(store.settings->value(keys::DoesLocateInpFirst));
    EXPECT_FALSE(window->optionItem(3)->isChecked());
    EXPECT_EQ(restarts, 0);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(userFrameVisible());
    EXPECT_TRUE(w->isVisible());
    EXPECT_TRUE(w->IsChanged());

    // No: the setting is negated once the application has closed, and it starts again.
    prompter.clear();
    prompter.queueAnswer(Answer::No);
    window->optionItem(3)->trigger();
    EXPECT_EQ(prompter.numbers(), (std::vector<int>{113, 143}));
    EXPECT_TRUE(store.settings->value(keys::DoesLocateInpFirst));
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(restarts, 1);
}

TEST_F(Customize, ClosingAsksAndThePlaceIsKeptInsideTheMainWindow) {
    // A place far beyond the right and bottom edges of the main window.
    store.settings->set(keys::CustomEasy_Left, 200000);
    store.settings->set(keys::CustomEasy_Top, 200000);
    ASSERT_TRUE(startSim());
    fCustomizeEasy* w = openWindow();
    ASSERT_NE(w, nullptr);
    auto* frame = qobject_cast<QMdiSubWindow*>(w->parentWidget());
    const QSize client = window->mdiArea()->viewport()->size();
    const int inside = twipsToPixels(1000, w->logicalDpiX());
    EXPECT_EQ(frame->x(), client.width() - inside);
    EXPECT_EQ(frame->y(), client.height() - inside);
    EXPECT_EQ(frame->width(), twipsToPixels(2130, w->logicalDpiX()));

    type(w, 1, QStringLiteral("st"));
    // Cancel keeps it open; Yes with a save that fails (the machine has gone) too.
    prompter.queueAnswer(Answer::Cancel);
    EXPECT_FALSE(w->closeWindow());
    store.settings->set(keys::CommPort, scratch.file(QStringLiteral("gone")));
    prompter.queueAnswer(Answer::Yes);
    EXPECT_FALSE(w->closeWindow());
    EXPECT_TRUE(frame->isVisible());
    EXPECT_TRUE(w->IsChanged());

    // No closes it and stores where it was.
    frame->move(40, 60);
    prompter.clear();
    prompter.queueAnswer(Answer::No);
    QPointer<fCustomizeEasy> gone = w;
    EXPECT_TRUE(w->closeWindow());
    EXPECT_EQ(prompter.numbers(), std::vector<int>{143});
    EXPECT_EQ(store.settings->value(keys::CustomEasy_Left), pixelsToTwips(40, window->logicalDpiX()));
    EXPECT_EQ(store.settings->value(keys::CustomEasy_Top), pixelsToTwips(60, window->logicalDpiX()));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(gone.isNull());
    EXPECT_EQ(startup->customizeEasy()->window(), nullptr);
}

TEST_F(Customize, F2ChoosesFromTheCustomisationCatalogueAndNoClearsTheFunction) {
    ASSERT_TRUE(startSim());
    fCustomizeEasy* w = openWindow();
    ASSERT_NE(w, nullptr);
    const int out01 = rowOf(w, "OUT01");
    w->grid()->setCurrentIndex(w->grid()->model()->index(out01, CustomizeEasyModel::ColFunction));
    w->grid()->setFocus();

    // The output dialog of the window's own pair lists Set07.e; "LP" is function 6 there.
    QStringList shownFunctions;
    const auto outputDialog = whenModal([&](QWidget* d) {
        auto* dialog = qobject_cast<fSelKino*>(d);
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->In_or_Out, 2);
        EXPECT_EQ(dialog->VMKKind, 1);
        for (QTreeWidgetItemIterator it(dialog->tree()); *it; ++it)
            shownFunctions << (*it)->data(0, fSelKino::DigitalRole).toString();
        dialog->tree()->setCurrentItem(dialog->findNodeByKey("6key"));
        dialog->selectOp();
    });
    QTest::keyClick(w->grid(), Qt::Key_F2);
    EXPECT_TRUE(shownFunctions.contains("LP  "));
    EXPECT_FALSE(shownFunctions.contains("SF1 ")) << "an input function in the output dialog";
    EXPECT_EQ(w->sheet().row(out01).digital, "LP  ");
    EXPECT_TRUE(w->sheet().row(out01).changed);

    // Cancel in the dialog leaves the row alone.
    const int in02 = rowOf(w, "IN02");
    w->grid()->setCurrentIndex(w->grid()->model()->index(in02, CustomizeEasyModel::ColFunction));
    const QString before = w->sheet().row(in02).digital;
    const auto cancelled = whenModal([](QWidget* d) { qobject_cast<fSelKino*>(d)->cancelOp(); });
    QTest::keyClick(w->grid(), Qt::Key_F2);
    EXPECT_EQ(w->sheet().row(in02).digital, before);
    EXPECT_FALSE(w->sheet().row(in02).changed);

    w->action(QStringLiteral("keyNO"))->trigger();
    EXPECT_EQ(w->sheet().row(in02).digital, " NO");

    // Cancel at the power question sends nothing and keeps the changes.
    const int frames = int(sim.frames().size());
    prompter.queueAnswer(Answer::Cancel);
    w->action(QStringLiteral("keySAVE"))->trigger();
    EXPECT_EQ(sim.frames().size(), frames);
    EXPECT_TRUE(w->IsChanged());
    prompter.queueAnswer(Answer::No); // closing with the changes
    EXPECT_TRUE(w->closeWindow());
}

} // namespace
} // namespace vkm::test
