#include "documentfixture.h"

#include <QDateTime>
#include <QFile>

// The sample programs shipped in data/samples are made here, cell by cell through the
// editor's entry rules, and saved through the editor's save. Run with VKM_WRITE_SAMPLES=1
// to write them again; otherwise the shipped files must be exactly what the editor makes.

namespace vkm::test {
namespace {

struct Entry {
    int row;
    int col; // column of the default layout (outputs 2..9, inputs 10..21)
    const char* text;
};

struct Sample {
    const char* file;
    std::vector<Entry> cells;
    std::vector<int> disabledRows;
    const char* author;
    const char* password;
    const char* memo;
};

// Default layout: output group 1 at 2 (function, logic, delay kind, delay value), group 2
// at 6; input groups at 10, 13, 16, 19 (function, state, relation).
const std::vector<Sample>& samples() {
    static const std::vector<Sample> all = {
        {"counter.gsp",
         {{1, 1, "Count pedal presses"},
          {1, 10, "X001"},
          {1, 11, "1"},
          {1, 12, "2"},
          {1, 2, "CN16"},
          {1, 3, "4"},
          {1, 6, "EMAKE"},
          {1, 7, "1"},
          {1, 8, "0"},
          {1, 9, "0"},
          {2, 1, "Lamp at 100"},
          {2, 10, "CN16"},
          {2, 12, "3"},
          {2, 13, "100"},
          {2, 15, "2"},
          {2, 2, "LAMP"},
          {2, 3, "1"},
          {2, 4, "0"},
          {2, 5, "0"},
          {3, 1, "Reset by knee"},
          {3, 10, "X003"},
          {3, 11, "0"},
          {3, 12, "2"},
          {3, 2, "CN16"},
          {3, 3, "7"}},
         {},
         "",
         "",
         ""},
        // The flow-control functions set their own logic (CALL 10, JMP 3, SUB 9, RET 11).
        {"jumps.gsp",
         {{1, 10, "X001"},
          {1, 11, "0"},
          {1, 12, "2"},
          {1, 2, "C010"},
          {2, 10, "ALL"},
          {2, 2, "J001"},
          {10, 1, "Subroutine"},
          {10, 10, "ALL"},
          {10, 2, "SUB"},
          {11, 10, "X002"},
          {11, 11, "0"},
          {11, 12, "2"},
          {11, 2, "Y001"},
          {11, 3, "1"},
          {11, 4, "0"},
          {11, 5, "100"},
          {12, 1, "Back to the caller"},
          {12, 2, "RET"}},
         {},
         "",
         "",
         ""},
        {"pulse.gsp",
         {{1, 1, "Trim pulse"}, {1, 10, "X001"}, {1, 11, "0"},    {1, 12, "2"},   {1, 2, "Y001"},
          {1, 3, "1"},          {1, 4, "0"},     {1, 5, "10"},    {1, 6, "Y001"}, {1, 7, "0"},
          {1, 8, "0"},          {1, 9, "60"},    {2, 10, "X002"}, {2, 11, "0"},   {2, 12, "0"},
          {2, 13, "X003"},      {2, 14, "0"},    {2, 15, "2"},    {2, 2, "Y002"}, {2, 3, "1"},
          {2, 4, "2"},          {2, 5, "20"},    {2, 6, "Y002"},  {2, 7, "0"},    {2, 8, "2"},
          {2, 9, "45"}},
         {},
         "",
         "",
         ""},
        {"protected.gsp",
         {{1, 10, "X001"},
          {1, 11, "0"},
          {1, 12, "2"},
          {1, 2, "Y001"},
          {1, 3, "1"},
          {1, 4, "0"},
          {1, 5, "20"},
          {2, 1, "Disabled wiper"},
          {2, 10, "X002"},
          {2, 11, "0"},
          {2, 12, "2"},
          {2, 2, "Y002"},
          {2, 3, "1"},
          {2, 4, "0"},
          {2, 5, "40"}},
         {2},
         "Maker01",
         "vkm123",
         "Sample program with a disabled row.\r\nPassword: vkm123"},
    };
    return all;
}

// Fixed scrambling time, so that the files come out the same at every run.
QDateTime sampleTime() {
    return QDateTime(QDate(2026, 11, 1), QTime(9, 30, 0), Qt::UTC);
}

QString samplePath(const char* file) {
    return QStringLiteral(VKM_SOURCE_DIR "/data/samples/") + QLatin1String(file);
}

using SamplePrograms = DocumentFixture;

TEST_F(SamplePrograms, AreWhatTheEditorMakesAndPassItsChecks) {
    docs->setClock(sampleTime);
    const bool write = qEnvironmentVariableIntValue("VKM_WRITE_SAMPLES") == 1;
    for (const Sample& s : samples()) {
        SCOPED_TRACE(s.file);
        prompter.queueAnswer(Answer::No);
        ASSERT_TRUE(docs->user().NewOp());
        for (const Entry& e : s.cells)
            ASSERT_TRUE(userEditor->entry().enterText(e.row, e.col, QString::fromUtf8(e.text)))
                << e.row << "," << e.col << " " << e.text << " " << prompter.lastNumber();
        for (int row : s.disabledRows)
            userEditor->conversion().DoGyoMuko(row, true);
        docs->userProgram().Author = QString::fromUtf8(s.author);
        docs->userProgram().Password = QString::fromUtf8(s.password);
        docs->userProgram().Memo = QString::fromUtf8(s.memo);
        const QString made = scratch.file(QLatin1String(s.file));
        prompter.queueFileName(made);
        ASSERT_TRUE(docs->user().SaveStepData(false))
            << prompter.lastNumber() << " " << errors.procedures().join(u',').toStdString();
        EXPECT_TRUE(prompter.numbers().empty());
        if (write) {
            QFile::remove(samplePath(s.file));
            ASSERT_TRUE(QFile::copy(made, samplePath(s.file)));
        }
        EXPECT_EQ(readAll(made), readAll(samplePath(s.file))) << "the shipped sample differs";

        // The shipped file opens (with its password) into the same grid and passes the checks.
        const QByteArray grid = userEditor->sheet().saveCells();
        prompter.queueAnswer(Answer::No);
        ASSERT_TRUE(docs->user().NewOp());
        if (*s.password)
            prompter.queueInput(QString::fromUtf8(s.password));
        ASSERT_TRUE(docs->user().ReadStep(0, 0, samplePath(s.file)));
        EXPECT_EQ(userEditor->sheet().saveCells(), grid);
        EXPECT_TRUE(userEditor->ExactInput());
        EXPECT_EQ(docs->userProgram().Author, QString::fromUtf8(s.author));
        EXPECT_EQ(docs->userProgram().Memo, QString::fromUtf8(s.memo));
        prompter.clear();
    }
}

} // namespace
} // namespace vkm::test
