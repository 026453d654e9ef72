#pragma once

#include "base/errorreporter.h"
#include "base/scriptedprompter.h"
#include "base/tempfolder.h"
#include "catalogue/cselections.h"
#include "document/documents.h"
#include "model/csteps.h"
#include "sheet/stepsheeteditor.h"
#include "testsupport.h"

#include <gtest/gtest.h>
#include <memory>

namespace vkm::test {

// Two editors over the bundled catalogues, the documents around them, a scratch folder
// for program files and a fresh private temporary folder per test.
class DocumentFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // A program with one step (X001 -> Y001 HIGH, TIMER 10) and the given remark,
    // password and author, written as a ".gsp" file in the scratch folder.
    QString writeProgram(const QString& name, const QString& remark, const QString& password = {},
                         const QString& author = {});
    QStringList tempFiles() const;

    ScriptedPrompter prompter;
    CapturingErrorSink errors;
    CSelections selout;
    CSelections selinp;
    std::unique_ptr<StepSheetEditor> userEditor;
    std::unique_ptr<StepSheetEditor> comparisonEditor;
    std::unique_ptr<Documents> docs;
    Scratch scratch;
    QStringList tiles;
};

} // namespace vkm::test
