#include "clicontext.h"

#include "base/legacytext.h"
#include "base/messages.h"
#include "base/paths.h"
#include "base/regdata.h"
#include "base/settings.h"
#include "catalogue/cselectkino.h"
#include "custom/initialfiles.h"
#include "link/machinefiles.h"

#include <QFile>
#include <QSaveFile>

#include <cstdio>

namespace vkm::cli {

CliContext::CliContext(QString archiveOverride)
    : m_archiveOverride(std::move(archiveOverride)), m_out(stdout), m_err(stderr) {}

QString CliContext::editorApplicationName() {
    QString name = messageBoxTitle();
    if (name.endsWith(QLatin1String("-cli")))
        name.chop(4);
    return name;
}

bool CliContext::applySettings(const QString& codePage) {
    if (!codePage.isEmpty()) {
        if (LegacyText::setCodePage(codePage))
            return true;
        m_err << "unknown code page " << codePage << '\n';
        m_err.flush();
        return false;
    }
    const Settings settings(editorApplicationName());
    if (!applyCodePageSetting(settings)) {
        m_err << "the setting CodePage names an unknown code page (" << settings.value(keys::CodePage)
              << "); using " << LegacyText::codePage() << '\n';
        m_err.flush();
    }
    return true;
}

QString CliContext::archivePath() const {
    return paths::settingArchive(m_archiveOverride);
}

bool CliContext::loadCatalogues() {
    if (m_loaded)
        return m_loadOk;
    m_loaded = true;
    // Messages of the loader go straight to stderr; what this context buffered goes first.
    m_err.flush();
    const QString archive = archivePath();
    if (!checkArchivePresent(archive, m_prompter))
        return false;
    // No settings store: the tool never changes the user's settings, and the unpacked
    // files go to the process's private folder and are removed after loading.
    CSelectKino kino(nullptr, m_prompter, archive);
    m_loadOk =
        ReadInitialFiles(kino, m_selout, m_selinp, m_cusI, m_cusO, m_selCusInp, m_selCusOut, m_prompter);
    std::fflush(stderr);
    return m_loadOk;
}

int CliContext::usageError(const QString& synopsis) {
    m_err << "usage: vkmstep-cli " << synopsis << '\n';
    return 2;
}

bool CliContext::readProgram(const QString& path, CSteps& program) {
    if (!loadCatalogues())
        return false;
    if (!ReadStepData(eUSR, path, program, m_selout, m_selinp, m_prompter)) {
        m_prompter.showMessage(19, 1); // "Failed to read data."
        return false;
    }
    return true;
}

bool CliContext::readFile(const QString& path, QByteArray& content) {
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly)) {
        m_err << path << ": " << in.errorString() << '\n';
        return false;
    }
    content = in.readAll();
    return true;
}

bool CliContext::canRead(const QString& path) {
    QFile in(path);
    if (in.open(QIODevice::ReadOnly))
        return true;
    m_err << path << ": " << in.errorString() << '\n';
    return false;
}

bool CliContext::writeFile(const QString& path, const QByteArray& content) {
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size() || !out.commit()) {
        m_err << path << ": " << out.errorString() << '\n';
        return false;
    }
    return true;
}

} // namespace vkm::cli
