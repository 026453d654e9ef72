#pragma once

#include <QWidget>
#include <functional>

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace vkm {

class Documents;
class Settings;

// The memo window: the program's memo (at most 496 legacy-code-page bytes) and the name
// of one related file beside the program. It stays open beside the editors; while it is
// open a new program is refused.
class fInpMemo : public QWidget {
    Q_OBJECT
public:
    // usrcmp: the editor whose program's memo is shown. settings may be null.
    fInpMemo(Documents& documents, int usrcmp, Settings* settings, QWidget* parent = nullptr);
    ~fInpMemo() override;

    int USRCMP() const { return m_usrcmp; }
    QPlainTextEdit* txtMemo() const { return m_txtMemo; }
    QLabel* lblNokori() const { return m_lblNokori; }
    QLabel* lblFileName() const { return m_lblFileName; }
    QComboBox* cboFontSize() const { return m_cboFontSize; }
    QPushButton* button(int index) const; // 1 OK, 2 Cancel, 3 choose, 4 open
    // Full path of the related file ("" when none).
    QString memoFilePath() const { return m_memoFilePath; }

    // Opens a file with the program associated with its type; false when there is none.
    // Tests replace the desktop's opener.
    void setOpener(std::function<bool(const QString&)> opener) { m_opener = std::move(opener); }

    void okClicked();
    void chooseRelatedFile();
    void openRelatedFile();

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void updateRemaining();
    // The text as the memo stores it: the stored memo while the text is as shown,
    // else the lines joined by CR LF.
    QString memoText() const;
    void applyFontSize();
    QString programFolder() const;

    Documents& m_documents;
    int m_usrcmp;
    Settings* m_settings;
    QPlainTextEdit* m_txtMemo;
    QLabel* m_lblNokori;
    QLabel* m_lblFileName;
    QComboBox* m_cboFontSize;
    QPushButton* m_buttons[4];
    QString m_memoFilePath;
    QString m_storedMemo; // the program's memo when the window opened
    QString m_shownText;  // that memo as the text box shows it
    std::function<bool(const QString&)> m_opener;
    bool m_stored = false;
};

} // namespace vkm
