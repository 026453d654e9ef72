// Tab through every dialog as a keyboard user does: from the first input to the buttons
// that end it, every control that can be used is reached once, in the order it stands.
#include "document/documents.h"
#include "fdlgreplace.h"
#include "ffind.h"
#include "finpmemo.h"
#include "finppassword.h"
#include "fprint.h"
#include "fpulse.h"
#include "fselcategory.h"
#include "fselkino.h"
#include "fsetport.h"
#include "guitestsupport.h"
#include "sheet/stepsheeteditor.h"

#include <QAbstractButton>
#include <QApplication>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace vkm::test {
namespace {

QString nameOf(const QWidget* w) {
    if (!w)
        return QStringLiteral("(none)");
    if (!w->objectName().isEmpty() && !w->objectName().startsWith(QLatin1String("qt_")))
        return w->objectName();
    if (auto* b = qobject_cast<const QAbstractButton*>(w))
        return b->text();
    return QString::fromLatin1(w->metaObject()->className());
}

// The controls of a window a user can reach with Tab: shown, enabled, taking the focus
// from the keyboard.
QStringList reachable(QWidget* window) {
    QStringList names;
    for (QWidget* w : window->findChildren<QWidget*>())
        if (w->isVisibleTo(window) && w->isEnabled() && (w->focusPolicy() & Qt::TabFocus) &&
            !w->focusProxy() && w->window() == window)
            names << nameOf(w);
    names.sort();
    return names;
}

// Shows the window, puts the focus on its first control and presses Tab until the focus
// comes back to it (or twice the number of controls): the controls visited, in order.
QStringList walk(QWidget* window, QWidget* first) {
    window->show();
    QApplication::setActiveWindow(window);
    first->setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == first; }))
        << qPrintable(nameOf(first));
    QStringList visited{nameOf(first)};
    const int limit = 2 * int(window->findChildren<QWidget*>().size());
    for (int i = 0; i < limit; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        if (QApplication::focusWidget() == first)
            return visited;
        visited << nameOf(QApplication::focusWidget());
    }
    ADD_FAILURE() << "Tab never came back to " << qPrintable(nameOf(first)) << ": "
                  << qPrintable(visited.join(QLatin1String(", ")));
    return visited;
}

void expectChain(QWidget* window, QWidget* first, const QStringList& order) {
    SCOPED_TRACE(qPrintable(window->objectName()));
    const QStringList visited = walk(window, first);
    EXPECT_EQ(visited, order) << qPrintable(visited.join(QLatin1String(", ")));
    QStringList sorted = visited;
    sorted.sort();
    EXPECT_EQ(sorted, reachable(window)) << "every control that can be used is on the way, once";
    window->close();
}

class TabOrder : public ::testing::Test, protected GuiFixture {
protected:
    TabOrder() {
        addBasicOutputs(out);
        inp.Add("IN1", 1, "Input 1", "IN", "0", "0");
    }
    StepSheetEditor user{out, inp, prompter, false, false};
    StepSheetEditor cmp{out, inp, prompter, true, false};
};

TEST_F(TabOrder, EditorToolWindowsGoFromTheirInputsToTheirButtons) {
    fFind find(user, {});
    find.BTN(3)->click(); // Replace... shows what to put instead
    expectChain(&find, find.findChild<QWidget*>(QStringLiteral("btnRef1Out")),
                {"btnRef1Out", "btnRef1In", "btnRef2Out", "btnRef2In", "BTN1", "BTN3", "BTN4", "BTN2"});

    fDlgReplace replace;
    expectChain(&replace, replace.findChild<QWidget*>(QStringLiteral("BTN1")),
                {"BTN1", "BTN2", "BTN3", "BTN4"});

    fPulse pulse(user, ts.settings.get(), {});
    expectChain(&pulse, pulse.findChild<QWidget*>(QStringLiteral("txtKino")),
                {"txtKino", "txtDelay1", "txtDelay2", "cboLogic", "cboDelayKind", "BTN1", "BTN2"});
}

TEST_F(TabOrder, DocumentDialogsGoFromTheirInputsToOkAndCancel) {
    fPrint print(prompter, ts.settings.get(), out, inp);
    // Preview stands first among the buttons; the options a step program has not are off.
    expectChain(&print, print.lst(),
                {"lst", "Select &all", "&Release all", "chkPrintMemo", "BTN4", "BTN1", "BTN2", "BTN3"});

    fInpPassword password(0, QString(), QString(), prompter);
    expectChain(&password, password.findChild<QWidget*>(QStringLiteral("txtPassword")),
                {"txtPassword", "txtAuthor", "OK", "&Cancel"});

    Documents docs(prompter, nullptr, out, inp, user, cmp);
    fInpMemo memo(docs, 0, nullptr);
    const QStringList memoButtons = [&] {
        QStringList texts;
        for (const QAbstractButton* b : memo.findChildren<QAbstractButton*>())
            texts << b->text();
        return texts; // OK, Cancel, then the two memo file buttons, as they are made
    }();
    ASSERT_EQ(memoButtons.size(), 4);
    expectChain(
        &memo, memo.txtMemo(),
        {"QPlainTextEdit", memoButtons[2], memoButtons[3], "QComboBox", memoButtons[0], memoButtons[1]});

    fSetPort port(ts.settings.get());
    expectChain(&port, port.findChild<QWidget*>(QStringLiteral("cboPort")), {"cboPort", "BTN1", "BTN2"});
}

TEST_F(TabOrder, SelectionDialogsGoFromTheirListToTheirButtons) {
    fSelKino kino(ts.settings.get(), prompter);
    kino.In_or_Out = 2;
    kino.sels = &out;
    kino.Form_Load();
    expectChain(&kino, kino.tree(), {"QTreeWidget", "Expand all items in opening.", "&Select", "&Cancel"});

    // One list and nothing else: Tab stays on it.
    fSelCategory category(out, QStringLiteral("OUT1"));
    expectChain(&category, category.findChild<QListWidget*>(), {"QListWidget"});
}

} // namespace
} // namespace vkm::test
