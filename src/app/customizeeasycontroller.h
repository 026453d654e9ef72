#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>

class QMdiArea;
class QWidget;

namespace vkm {

struct AppContext;
struct MachineLink;
class fCustomizeEasy;

// The main window's easy customisation: reads the machine's customisation area through the
// transfer dialog, loads it as the customisation image and into the custom input and
// output tables, and opens the easy customisation window on it. Holds the image read last,
// which the window writes its functions into when it saves.
class CustomizeEasyController : public QObject {
    Q_OBJECT
public:
    // link: the machine link of the run (the kind of the machine last read is shared by
    // every transfer); mdi: where the window is shown.
    CustomizeEasyController(AppContext& context, MachineLink& link, QMdiArea* mdi, QWidget* dialogParent);
    ~CustomizeEasyController() override;

    // The toolbar's command (kind 4, not used further): the open window's own question
    // first, then the read; nothing opens when the read fails or is cancelled, or the data
    // cannot be loaded (message 4). True when the window was opened.
    bool ReadCustomizeEasy(int kind);
    // The customisation area read from the machine: the file the transfer dialog wrote, or
    // "" when the read failed or was cancelled. kind 0 for a first read; any other for the
    // read before a save ("Reading data before save").
    QString GetReadFileCustomizeEasy(int kind);
    // Tests put their own read of the machine's area in place of the transfer dialog: it
    // is given the kind above and returns the file read, "" for a failed read.
    void setMachineRead(std::function<QString(int kind)> read) { m_machineRead = std::move(read); }
    // Loads a customisation file as the image and into the tables; message 4 with
    // "CUSTOMIZE" when it cannot, and nothing changes.
    bool ReadCustomizeData(const QString& path);

    // The read that comes before a save: the machine's area again, loaded as the image.
    bool readBeforeSave();
    // Sends a customisation transfer text through the transfer dialog; true when it
    // completed.
    bool writeToMachine(const QString& file);

    const QByteArray& image() const { return m_image; }
    AppContext& context() { return m_context; }
    QWidget* dialogParent() const { return m_dialogParent; }
    // The open window, nullptr when there is none.
    fCustomizeEasy* window() const;

private:
    fCustomizeEasy* openWindow(const QString& file);

    AppContext& m_context;
    MachineLink& m_link;
    QMdiArea* m_mdi;
    QWidget* m_dialogParent;
    QByteArray m_image;
    QPointer<fCustomizeEasy> m_window;
    std::function<QString(int)> m_machineRead;
};

} // namespace vkm
