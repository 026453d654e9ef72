#include "finpmemo.h"
#include "tabchain.h"

#include "editorresources.h"

#include "base/messages.h"
#include "base/prompter.h"
#include "base/settings.h"
#include "document/documents.h"
#include "document/memorules.h"
#include "finppassword.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QUrl>
#include <QVBoxLayout>

namespace vkm {

namespace {
constexpr int kFontMin = 9;
constexpr int kFontMax = 20;

double dpi(const QWidget* w) {
    const QScreen* s = w->screen();
    return s ? s->logicalDotsPerInch() : 96.0;
}
} // namespace

fInpMemo::fInpMemo(Documents& documents, int usrcmp, Settings* settings, QWidget* parent)
    : QWidget(parent), m_documents(documents), m_usrcmp(usrcmp), m_settings(settings),
      m_txtMemo(new QPlainTextEdit(this)), m_lblNokori(new QLabel(this)), m_lblFileName(new QLabel(this)),
      m_cboFontSize(new QComboBox(this)) {
    setObjectName(QStringLiteral("fInpMemo"));
    setWindowTitle(LoadMessageText(205));
    setWindowIcon(editorIcon(QStringLiteral("keyMEMO")));
    const int captions[4] = {206, 207, 546, 547};
    for (int i = 0; i < 4; ++i)
        m_buttons[i] = new QPushButton(LoadMessageText(captions[i]), this);
    m_buttons[0]->setEnabled(usrcmp == 0);

    auto* fileBox = new QGroupBox(LoadMessageText(545), this);
    auto* fileRow = new QHBoxLayout(fileBox);
    fileRow->addWidget(m_lblFileName, 1);
    fileRow->addWidget(m_buttons[2]);
    fileRow->addWidget(m_buttons[3]);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_lblNokori);
    bottom->addStretch();
    bottom->addWidget(new QLabel(LoadMessageText(548), this));
    bottom->addWidget(m_cboFontSize);
    bottom->addWidget(m_buttons[0]);
    bottom->addWidget(m_buttons[1]);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_txtMemo, 1);
    layout->addWidget(fileBox);
    layout->addLayout(bottom);
    // Tab leaves the note for the controls below it, top to bottom, left to right; a
    // note is plain lines for the machine's display, where a tab has no use.
    m_txtMemo->setTabChangesFocus(true);
    setTabChain({m_txtMemo, m_buttons[2], m_buttons[3], m_cboFontSize, m_buttons[0], m_buttons[1]});
    SetFontSize(this);

    for (int size = kFontMin; size <= kFontMax; ++size)
        m_cboFontSize->addItem(QString::number(size), size);
    int fontSize = m_settings ? m_settings->value(keys::Memo_FontSize) : keys::Memo_FontSize.defaultValue;
    fontSize = qBound(kFontMin, fontSize, kFontMax);
    m_cboFontSize->setCurrentIndex(fontSize - kFontMin);
    if (m_settings) {
        const int w = twipsToPixels(m_settings->value(keys::Memo_Width), dpi(this));
        const int h = twipsToPixels(m_settings->value(keys::Memo_Height), dpi(this));
        resize(qMax(200, w), qMax(150, h));
    }

    const CSteps& user = m_documents.userProgram();
    // The memo keeps the machine's line breaks (CR LF; a file written elsewhere may hold a
    // lone CR or LF); the text box shows plain lines.
    m_storedMemo = m_documents.program(usrcmp).Memo;
    m_shownText =
        QString(m_storedMemo).replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    m_txtMemo->setPlainText(m_shownText);
    m_lblFileName->setText(user.MemoFile);
    if (!user.MemoFile.isEmpty())
        m_memoFilePath = QFileInfo(programFolder() + QLatin1Char('/') + user.MemoFile).absoluteFilePath();
    applyFontSize();
    updateRemaining();

    connect(m_txtMemo, &QPlainTextEdit::textChanged, this, &fInpMemo::updateRemaining);
    connect(m_cboFontSize, &QComboBox::currentIndexChanged, this, &fInpMemo::applyFontSize);
    connect(m_buttons[0], &QPushButton::clicked, this, &fInpMemo::okClicked);
    connect(m_buttons[1], &QPushButton::clicked, this, &QWidget::close);
    connect(m_buttons[2], &QPushButton::clicked, this, &fInpMemo::chooseRelatedFile);
    connect(m_buttons[3], &QPushButton::clicked, this, &fInpMemo::openRelatedFile);
    m_opener = [](const QString& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); };
}

fInpMemo::~fInpMemo() = default;

QPushButton* fInpMemo::button(int index) const {
    return index >= 1 && index <= 4 ? m_buttons[index - 1] : nullptr;
}

QString fInpMemo::programFolder() const {
    const QString path = m_documents.userFilePath();
    return path.isEmpty() ? QString() : QFileInfo(path).absolutePath();
}

QString fInpMemo::memoText() const {
    // Untouched, the memo is what the program holds, line breaks and all: OK then changes
    // nothing. Edited, each line break is stored as CR LF and counts two bytes.
    const QString shown = m_txtMemo->toPlainText();
    if (shown == m_shownText)
        return m_storedMemo;
    return QString(shown).replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

void fInpMemo::updateRemaining() {
    m_lblNokori->setText(LoadMessageText(543) + QString::number(memoRemaining(memoText())));
}

void fInpMemo::applyFontSize() {
    QFont f = m_txtMemo->font();
    f.setPointSize(m_cboFontSize->currentData().toInt());
    m_txtMemo->setFont(f);
}

void fInpMemo::okClicked() {
    if (m_usrcmp != 0)
        return;
    if (!m_documents.user().storeMemoWindow(memoText(), m_lblFileName->text())) {
        m_txtMemo->setFocus();
        return;
    }
    close();
}

void fInpMemo::chooseRelatedFile() {
    Prompter& prompter = m_documents.prompter();
    const QString folder = programFolder();
    if (folder.isEmpty()) {
        prompter.showMessage(137, 2);
        return;
    }
    FileDialogRequest request;
    request.title = QStringLiteral("open");
    request.filter = QStringLiteral("*.*|*.*");
    request.startDir = folder;
    request.proposedName = m_lblFileName->text();
    const QString chosen = prompter.openFileName(request);
    if (chosen.isEmpty() || !checkMemoFile(chosen, folder, prompter))
        return;
    const QFileInfo info(chosen);
    m_lblFileName->setText(info.fileName());
    m_memoFilePath = info.absoluteFilePath();
}

void fInpMemo::openRelatedFile() {
    Prompter& prompter = m_documents.prompter();
    if (m_memoFilePath.isEmpty() || !QFileInfo(m_memoFilePath).isFile()) {
        prompter.showMessage(140, 2, m_memoFilePath);
        return;
    }
    if (!m_opener || !m_opener(m_memoFilePath))
        prompter.showMessage(139, 2);
}

void fInpMemo::closeEvent(QCloseEvent* event) {
    if (m_settings) {
        const double d = dpi(this);
        m_settings->set(keys::Memo_Width, pixelsToTwips(width(), d));
        m_settings->set(keys::Memo_Height, pixelsToTwips(height(), d));
        m_settings->set(keys::Memo_FontSize, m_cboFontSize->currentData().toInt());
    }
    event->accept();
    Q_EMIT closed();
}

} // namespace vkm
