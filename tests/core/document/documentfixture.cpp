#include "documentfixture.h"

#include "link/transfertext.h"
#include "model/codes.h"

#include <QDir>
#include <QFile>

namespace vkm::test {

void DocumentFixture::SetUp() {
    TempFolder::instance().recreate();
    const QString setting = QStringLiteral(VKM_SOURCE_DIR "/data/setting");
    ASSERT_TRUE(selout.ReadSet6_7_8_9e(setting, QStringLiteral("Set08.e")));
    ASSERT_TRUE(selinp.ReadSet6_7_8_9e(setting, QStringLiteral("Set09.e")));
    userEditor = std::make_unique<StepSheetEditor>(selout, selinp, prompter, false, false);
    comparisonEditor = std::make_unique<StepSheetEditor>(selout, selinp, prompter, true, false);
    docs = std::make_unique<Documents>(prompter, nullptr, selout, selinp, *userEditor, *comparisonEditor,
                                       scratch.path());
    EditorHooks hooks;
    hooks.changed = [this] { docs->user().setChanged(true); };
    userEditor->setHooks(hooks);
    DocumentHooks dh;
    dh.tileHorizontally = [this] { tiles << QStringLiteral("tile"); };
    docs->setHooks(dh);
}

void DocumentFixture::TearDown() {
    docs->shutdown();
}

QString DocumentFixture::writeProgram(const QString& name, const QString& remark, const QString& password,
                                      const QString& author) {
    CSteps p;
    auto outs = std::make_shared<CStepOuts>();
    outs->Add(1, 256, LogicHigh, DelayTimer, 5, selout); // Y001, shown as 10
    auto inps = std::make_shared<CStepInps>();
    inps->Add(1, 256, StatePosLev, RelEnd); // X001
    p.Add(outs, inps, remark, false, false);
    for (int row = 2; row <= kMaxSteps; ++row)
        p.Add(nullptr, nullptr, QString(), true, false);
    p.Password = password;
    p.Author = author;
    const QString image = scratch.file(name + QStringLiteral(".bin"));
    const QString path = scratch.file(name);
    EXPECT_TRUE(p.SaveData(image, true, selout, selinp));
    EXPECT_TRUE(SaveAsTextStep(image, path));
    QFile::remove(image);
    return path;
}

QStringList DocumentFixture::tempFiles() const {
    return QDir(TempFolder::instance().path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

} // namespace vkm::test
