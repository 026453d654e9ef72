#include "base/scriptedprompter.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <unistd.h>

namespace vkm {
namespace {

// Replaces the test program's handler (which fails the test) while a case provokes
// unscripted questions on purpose.
class CollectUnscripted {
public:
    CollectUnscripted() {
        ScriptedPrompter::setUnscriptedHandler([this](const QString& what) { seen << what; });
    }
    ~CollectUnscripted() {
        ScriptedPrompter::setUnscriptedHandler(
            [](const QString& what) { ADD_FAILURE() << "ScriptedPrompter: " << what.toStdString(); });
    }
    QStringList seen;
};

TEST(ScriptedPrompter, AQuestionWithoutAScriptedAnswerIsReportedAndRefused) {
    CollectUnscripted collect;
    ScriptedPrompter p;
    p.queueAnswer(Answer::Yes);
    EXPECT_EQ(p.showMessage(13, 6), Answer::Yes);
    EXPECT_EQ(p.showMessage(13, 6), Answer::No);      // Yes/No/Cancel: No
    EXPECT_EQ(p.showMessage(69, 10), Answer::Cancel); // OK/Cancel: Cancel
    EXPECT_EQ(p.showMessage(50, 1), Answer::None);    // a plain message is not a question
    EXPECT_EQ(p.inputText("t", "prompt", ""), std::nullopt);
    EXPECT_EQ(p.openFileName({}), QString());
    EXPECT_EQ(p.askRetry("Timer over"), Answer::Cancel); // Retry/Cancel: Cancel
    EXPECT_EQ(p.unscriptedCount(), 5);
    ASSERT_EQ(collect.seen.size(), 5);
    EXPECT_TRUE(collect.seen[0].contains(QStringLiteral("Data is chaneged.")));

    // A default answer or cancelled dialogs are scripted, not reported.
    ScriptedPrompter q;
    q.setDefaultAnswer(Answer::Yes);
    q.setCancelDialogsByDefault(true);
    EXPECT_EQ(q.showMessage(13, 6), Answer::Yes);
    EXPECT_EQ(q.saveFileName({}), QString());
    EXPECT_EQ(q.unscriptedCount(), 0);

    // Retry questions take Retry or Cancel from the script, whatever else was queued.
    ScriptedPrompter r;
    r.queueAnswer(Answer::Retry);
    r.queueAnswer(Answer::Ok);
    EXPECT_EQ(r.askRetry("Timer over"), Answer::Retry);
    EXPECT_EQ(r.askRetry("Timer over"), Answer::Cancel);
    ASSERT_EQ(r.shown().size(), 2u);
    EXPECT_EQ(r.shown()[0].style, ScriptedPrompter::kRetryStyle);
}

TEST(ConsolePrompter, AnswersForAnAbsentUserAreNoOrCancel) {
    // The messages go to stderr; keep the test log clean.
    std::fflush(stderr);
    const int saved = dup(fileno(stderr));
    ASSERT_NE(std::freopen("/dev/null", "w", stderr), nullptr);
    ConsolePrompter p;
    p.queueAnswer(Answer::Yes);
    const Answer first = p.showMessage(160, 3);
    const Answer second = p.showMessage(160, 3);
    const Answer third = p.showMessage(69, 10);
    const Answer fourth = p.showMessage(13, 6);
    p.queueAnswer(Answer::Retry);
    const Answer retried = p.askRetry("Timer over");
    const Answer notRetried = p.askRetry("Timer over");
    std::fflush(stderr);
    dup2(saved, fileno(stderr));
    close(saved);
    EXPECT_EQ(first, Answer::Yes);
    EXPECT_EQ(second, Answer::No);
    EXPECT_EQ(third, Answer::Cancel);
    EXPECT_EQ(fourth, Answer::No);
    EXPECT_EQ(retried, Answer::Retry);
    EXPECT_EQ(notRetried, Answer::Cancel);
    EXPECT_EQ(p.lastText(), QStringLiteral("Timer over"));
}

} // namespace
} // namespace vkm
