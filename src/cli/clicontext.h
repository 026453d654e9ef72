#pragma once

#include "base/scriptedprompter.h"
#include "catalogue/cselections.h"
#include "custom/ccustominps.h"
#include "custom/ccustomouts.h"
#include "model/csteps.h"

#include <QTextStream>
#include <memory>

namespace vkm::cli {

// What the sub-commands share: output streams, the prompter that prints messages,
// and the catalogues of the setting archive, loaded on first use.
class CliContext {
public:
    explicit CliContext(QString archiveOverride);

    // Takes the code page of legacy texts from the editor's own settings store ("General"/
    // "CodePage", read only: the tool never writes the user's settings), unless codePage
    // names one. An unknown name given here is an error (printed; false); an unknown name
    // in the store is warned about and the default stays.
    bool applySettings(const QString& codePage);
    // The settings store the editor uses: its application name is the editor's, which is
    // this tool's name without "-cli" ("vkmstep" for "vkmstep-cli").
    static QString editorApplicationName();

    QTextStream& out() { return m_out; }
    QTextStream& err() { return m_err; }
    ConsolePrompter& prompter() { return m_prompter; }

    // Loads the four catalogues (and the custom terminal tables) from the archive.
    // On failure the message has been printed on stderr and false is returned.
    bool loadCatalogues();
    const CSelections& selout() const { return m_selout; }
    const CSelections& selinp() const { return m_selinp; }
    const CSelections& selCusInp() const { return m_selCusInp; }
    const CSelections& selCusOut() const { return m_selCusOut; }
    const CCustomInps& cusI() const { return m_cusI; }
    const CCustomOuts& cusO() const { return m_cusO; }
    QString archivePath() const;

    // Prints "usage: vkmstep-cli <synopsis>" on stderr; the exit code of a wrong call (2).
    int usageError(const QString& synopsis);
    // Loads the catalogues and reads a program file as the editor opens it. On failure the
    // reason (and "Failed to read data." for the file itself) has been printed; false.
    bool readProgram(const QString& path, CSteps& program);
    // A whole file's bytes; false with "<path>: <reason>" on stderr.
    bool readFile(const QString& path, QByteArray& content);
    // Whether the file opens for reading, for a reader that opens it itself; false with
    // "<path>: <reason>" on stderr.
    bool canRead(const QString& path);
    // Writes the file in one piece (nothing half-written is left behind); false with
    // "<path>: <reason>" on stderr.
    bool writeFile(const QString& path, const QByteArray& content);

private:
    QString m_archiveOverride;
    QTextStream m_out;
    QTextStream m_err;
    ConsolePrompter m_prompter;
    bool m_loaded = false;
    bool m_loadOk = false;
    CSelections m_selout, m_selinp, m_selCusInp, m_selCusOut;
    CCustomInps m_cusI;
    CCustomOuts m_cusO;
};

} // namespace vkm::cli
