#include "documentfixture.h"

#include "document/editscript.h"
#include "document/editsession.h"

#include <QFileInfo>

namespace vkm::test {
namespace {

// The user editor driven as the window drives it (edits recorded, blocks snapshotted),
// with the sheet states of each step kept to compare undo and redo against.
class UndoHistoryTest : public DocumentFixture {
protected:
    void SetUp() override {
        DocumentFixture::SetUp();
        session = std::make_unique<EditSession>(*docs);
        docs->hooks().stateChanged = [this](int usrcmp) { stateCalls << usrcmp; };
    }
    void TearDown() override {
        session.reset();
        DocumentFixture::TearDown();
    }
    void run(const QString& script) {
        EditScript s = stepEditorScript();
        QString error;
        ASSERT_TRUE(s.read(script, *session, error)) << error.toStdString();
        s.run(*session);
    }
    StepDocument& doc() { return docs->user(); }
    StepSheet& sheet() { return userEditor->sheet(); }
    QByteArray cells() { return sheet().saveCells(); }
    void undoYes() {
        prompter.queueAnswer(Answer::Yes);
        doc().UndoCommand();
    }

    std::unique_ptr<EditSession> session;
    QList<int> stateCalls;
};

TEST_F(UndoHistoryTest, CellEditsAndBlockSnapshotsUndoNewestFirstAndRedoInOrder) {
    const QByteArray empty = cells();
    run(QStringLiteral("type 1 remark first"));
    const QByteArray afterRemark = cells();
    run(QStringLiteral("type 1 out1 Y001\ntype 1 out1.logic HIGH"));
    const QByteArray afterLogic = cells();
    run(QStringLiteral("delete 1 remark 1 out1.logic")); // a block: a snapshot file
    const QByteArray afterDelete = cells();
    ASSERT_EQ(doc().undoFiles().size(), 1);
    const QString snapshot = doc().undoFiles().first();
    EXPECT_TRUE(QFileInfo(snapshot).fileName().startsWith(QStringLiteral("~pl")));
    run(QStringLiteral("choose 2 out1 257")); // F2 and the selection dialog: Y002
    const QByteArray afterChoose = cells();
    ASSERT_NE(afterChoose, afterDelete);
    EXPECT_TRUE(doc().canUndo());
    EXPECT_FALSE(doc().canRedo());

    // No to the question keeps the grid; Yes walks back through both kinds, newest first.
    prompter.queueAnswer(Answer::No);
    doc().UndoCommand();
    EXPECT_EQ(cells(), afterChoose);
    undoYes();
    EXPECT_EQ(cells(), afterDelete);
    EXPECT_TRUE(doc().canRedo());
    undoYes();
    EXPECT_EQ(cells(), afterLogic);
    EXPECT_FALSE(QFileInfo::exists(snapshot)) << "an undone snapshot file is removed";
    undoYes();
    undoYes();
    EXPECT_EQ(cells(), afterRemark);

    // Redo goes forward again in the same order, without a question.
    prompter.clear();
    ASSERT_TRUE(doc().RedoCommand());
    ASSERT_TRUE(doc().RedoCommand());
    EXPECT_EQ(cells(), afterLogic);
    ASSERT_TRUE(doc().RedoCommand());
    EXPECT_EQ(cells(), afterDelete);
    ASSERT_TRUE(doc().RedoCommand());
    EXPECT_EQ(cells(), afterChoose);
    EXPECT_FALSE(doc().RedoCommand());
    EXPECT_TRUE(prompter.numbers().empty());

    // And undoing all of it gives the empty program back; then there is truly nothing.
    for (int i = 0; i < 5; ++i)
        undoYes();
    EXPECT_EQ(cells(), empty);
    EXPECT_FALSE(doc().canUndo());
    prompter.clear();
    doc().UndoCommand();
    EXPECT_EQ(prompter.numbers(), std::vector<int>({95}));
    EXPECT_TRUE(doc().IsChanged()) << "undo sets the changed flag";
}

TEST_F(UndoHistoryTest, ANewChangeEmptiesRedoAndRefusedOrUnchangedEntriesAddNoStep) {
    run(QStringLiteral("type 1 remark one\ntype 1 remark two"));
    undoYes();
    ASSERT_TRUE(doc().canRedo());
    run(QStringLiteral("type 1 remark three"));
    EXPECT_FALSE(doc().canRedo());
    EXPECT_FALSE(doc().RedoCommand());
    EXPECT_EQ(sheet().text(1, StepSheet::GetcolRemark()), QStringLiteral("three"));

    // A refused entry, a text equal to the cell's and a cancelled dialog change nothing.
    const QByteArray before = cells();
    prompter.clear();
    run(QStringLiteral("type 1 out1 NOSUCH\ntype 1 remark three\nchoose 1 out1 cancel"));
    EXPECT_EQ(prompter.numbers(), std::vector<int>({67}));
    EXPECT_EQ(cells(), before);
    undoYes();
    EXPECT_EQ(sheet().text(1, StepSheet::GetcolRemark()), QStringLiteral("one"))
        << "the undone step is the last real change";
}

TEST_F(UndoHistoryTest, AReplacementIsOneStepAndUndoingItRestoresEveryReplacedCell) {
    run(QStringLiteral("type 1 out1 Y001\ntype 2 out1 Y001"));
    const QByteArray typed = cells();
    run(QStringLiteral("replace Y001 Y002 output all"));
    ASSERT_EQ(sheet().text(2, sheet().GetcolOutKino1()), QStringLiteral("Y002"));
    undoYes();
    EXPECT_EQ(cells(), typed);

    // A function put in by name for a replacement (its category found as for a typed
    // one) adds nothing to the snapshot taken before it.
    ASSERT_TRUE(doc().SaveCurrent());
    ASSERT_TRUE(
        userEditor->entry().putFunction(2, sheet().GetcolOutKino1(), QStringLiteral("Y003"), QString()));
    undoYes();
    EXPECT_EQ(cells(), typed);
    undoYes();
    EXPECT_TRUE(sheet().text(2, sheet().GetcolOutKino1()).isEmpty()) << "the next undo is the typed cell";
}

TEST_F(UndoHistoryTest, CellStepsAreCappedWhileSnapshotFilesAreKept) {
    const QByteArray empty = cells();
    run(QStringLiteral("delete 1 remark 1 out1")); // a snapshot of the empty sheet
    QString script;
    const int edits = UndoHistory::kMaxMemorySteps + 5;
    for (int i = 0; i < edits; ++i)
        script += QStringLiteral("type 1 remark r%1\n").arg(i);
    run(script);
    EXPECT_EQ(doc().undoFiles().size(), 1);
    int undone = 0;
    while (doc().canUndo()) {
        undoYes();
        ++undone;
    }
    EXPECT_EQ(undone, UndoHistory::kMaxMemorySteps + 1);
    // The oldest cell steps went; every step being a whole sheet, the file still brings
    // back exactly what it held.
    EXPECT_EQ(cells(), empty);
}

TEST_F(UndoHistoryTest, ChangedFlagAndHistoryAreAnnouncedAndOpeningOrNewForgetsBoth) {
    const QString path = writeProgram(QStringLiteral("h.gsp"), QStringLiteral("row1"));
    ASSERT_TRUE(doc().ReadStep(0, 0, path));
    stateCalls.clear();
    run(QStringLiteral("type 2 remark x"));
    EXPECT_TRUE(doc().IsChanged());
    EXPECT_FALSE(stateCalls.isEmpty());
    undoYes();
    ASSERT_TRUE(doc().canRedo());

    stateCalls.clear();
    ASSERT_TRUE(doc().ReadStep(0, 0, path));
    EXPECT_FALSE(doc().IsChanged());
    EXPECT_FALSE(doc().canUndo());
    EXPECT_FALSE(doc().canRedo());
    EXPECT_TRUE(stateCalls.contains(0));

    run(QStringLiteral("type 2 remark y"));
    prompter.queueAnswer(Answer::No); // the unsaved-changes question of New
    ASSERT_TRUE(doc().NewOp());
    EXPECT_FALSE(doc().canUndo());
    EXPECT_FALSE(doc().IsChanged());
}

TEST_F(UndoHistoryTest, TheComparisonProgramRecordsAndUndoesNothing) {
    docs->comparison().recordCellEdit(cells());
    EXPECT_FALSE(docs->comparison().canUndo());
    EXPECT_FALSE(docs->comparison().RedoCommand());
    docs->comparison().UndoCommand();
    EXPECT_TRUE(prompter.numbers().empty());
}

} // namespace
} // namespace vkm::test
