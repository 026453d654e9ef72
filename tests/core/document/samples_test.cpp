#include "documentfixture.h"

#include <QDateTime>
#include <QFile>

// The sample programs shipped in data/samples are made here, cell by cell through the
// editor's entry rules, and saved through the editor's save. Run with VKM_WRITE_SAMPLES=1
// to write them again; otherwise the shipped files must be exactly what the editor makes.

namespace vkm::test {
namespace {

// A row's cells in the order they are typed: "COL=TEXT;COL=TEXT;...", columns of the
// default layout (remark 1, output groups at 2 and 6: function, logic, delay kind, delay
// value; input groups at 10, 13, 16, 19: function, state, relation).
struct Sample {
    const char* file;
    std::vector<std::pair<int, const char*>> rows;
    std::vector<int> disabledRows = {};
    const char* author = "";
    const char* password = "";
    const char* memo = "";
};

const std::vector<Sample>& samples() {
    static const std::vector<Sample> all = {
        {"counter.gsp",
         {{1, "1=Count pedal presses;10=X001;11=1;12=2;2=CN16;3=4;6=EMAKE;7=1;8=0;9=0"},
          {2, "1=Lamp at 100;10=CN16;12=3;13=100;15=2;2=LAMP;3=1;4=0;5=0"},
          {3, "1=Reset by knee;10=X003;11=0;12=2;2=CN16;3=7"}}},
        // The flow-control functions set their own logic (CALL 10, JMP 3, SUB 9, RET 11).
        {"jumps.gsp",
         {{1, "10=X001;11=0;12=2;2=C010"},
          {2, "10=ALL;2=J001"},
          {10, "1=Subroutine;10=ALL;2=SUB"},
          {11, "10=X002;11=0;12=2;2=Y001;3=1;4=0;5=100"},
          {12, "1=Back to the caller;2=RET"}}},
        {"pulse.gsp",
         {{1, "1=Trim pulse;10=X001;11=0;12=2;2=Y001;3=1;4=0;5=10;6=Y001;7=0;8=0;9=60"},
          {2, "10=X002;11=0;12=0;13=X003;14=0;15=2;2=Y002;3=1;4=2;5=20;6=Y002;7=0;8=2;9=45"}}},
        // The end of a seam: heel back with the needle up trims, wipes and lifts the foot;
        // the pedal forward lowers it; every heel-back counts a piece.
        {"trimmer.gsp",
         {{1,
           "1=Trim at needle up;10=X002;11=0;12=0;13=X004;14=0;15=2;2=Y001;3=1;4=0;5=0;6=Y001;7=0;8=0;9=80"},
          {2, "1=Wipe after the "
              "trim;10=X002;11=0;12=0;13=X004;14=0;15=2;2=Y002;3=1;4=0;5=100;6=Y002;7=0;8=0;9=160"},
          {3, "1=Lift the foot;10=X002;11=0;12=2;2=Y003;3=1;4=0;5=200"},
          {4, "1=Foot down, pedal on;10=X001;11=0;12=2;2=Y003;3=0;4=0;5=0"},
          {5, "1=Count the pieces;10=X002;11=1;12=2;2=CN40;3=4;6=EMAKE;7=1;8=0;9=0"}}},
        {"protected.gsp",
         {{1, "10=X001;11=0;12=2;2=Y001;3=1;4=0;5=20"},
          {2, "1=Disabled wiper;10=X002;11=0;12=2;2=Y002;3=1;4=0;5=40"}},
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
        for (const auto& [row, cells] : s.rows)
            for (const QString& cell : QString::fromUtf8(cells).split(u';')) {
                const int col = cell.section(u'=', 0, 0).toInt();
                ASSERT_TRUE(userEditor->entry().enterText(row, col, cell.section(u'=', 1)))
                    << row << "," << qPrintable(cell) << " " << prompter.lastNumber();
            }
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
