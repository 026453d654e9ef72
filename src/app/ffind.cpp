#include "ffind.h"
#include "tabchain.h"

#include "catalogue/cselections.h"
#include "sheet/stepsheeteditor.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace vkm {

fFind::fFind(StepSheetEditor& editor, FunctionChooser chooser, QWidget* parent)
    : QDialog(parent, Qt::Tool), m_editor(editor), m_finder(editor.finder()), m_chooser(std::move(chooser)) {
    setObjectName(QStringLiteral("fFind"));
    setModal(false);
    setWindowTitle(m_finder.USRCMP() == 0 ? QStringLiteral("Find <USER>")
                                          : QStringLiteral("Find <COMPARATIVE>"));

    auto* values = new QVBoxLayout;
    values->addWidget(makeValueBox(1, QStringLiteral("Find what (function name)")));
    m_replaceBox = makeValueBox(2, QStringLiteral("Replace with (function name)"));
    values->addWidget(m_replaceBox);

    auto* buttons = new QVBoxLayout;
    const std::pair<int, const char*> captions[] = {
        {1, "&Next"}, {3, "&Replace..."}, {4, "Replace &all"}, {2, "&Cancel"}};
    for (const auto& [index, caption] : captions) {
        auto* b = new QPushButton(QString::fromLatin1(caption), this);
        b->setObjectName(QStringLiteral("BTN%1").arg(index));
        b->setAutoDefault(false);
        m_buttons[index - 1] = b;
        buttons->addWidget(b);
    }
    buttons->addStretch(1);
    m_buttons[0]->setDefault(true);
    connect(m_buttons[0], &QPushButton::clicked, this, &fFind::nextOp);
    connect(m_buttons[1], &QPushButton::clicked, this, &QDialog::close);
    connect(m_buttons[2], &QPushButton::clicked, this, &fFind::replaceOp);
    connect(m_buttons[3], &QPushButton::clicked, this, &fFind::replaceAllOp);

    auto* layout = new QHBoxLayout(this);
    layout->addLayout(values, 1);
    layout->addLayout(buttons);
    // What to find, what to put instead (shown once Replace was pressed), then the
    // commands, as they stand from top left to bottom right.
    setTabChain({m_browse[0][1], m_browse[0][0], m_browse[1][1], m_browse[1][0], m_buttons[0], m_buttons[2],
                 m_buttons[3], m_buttons[1]});
}

QGroupBox* fFind::makeValueBox(int value, const QString& title) {
    auto* box = new QGroupBox(title, this);
    auto* grid = new QGridLayout(box);
    m_category[value - 1] = new QLabel(box);
    m_category[value - 1]->setObjectName(QStringLiteral("lblCategory%1").arg(value));
    m_digi[value - 1] = new QLabel(box);
    m_digi[value - 1]->setObjectName(QStringLiteral("lblDigi%1").arg(value));
    for (QLabel* shown : {m_category[value - 1], m_digi[value - 1]}) {
        shown->setFrameShape(QFrame::Panel);
        shown->setFrameShadow(QFrame::Sunken);
        shown->setMinimumWidth(110);
    }
    grid->addWidget(new QLabel(QStringLiteral("Category:"), box), 0, 0);
    grid->addWidget(m_category[value - 1], 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Function:"), box), 1, 0);
    grid->addWidget(m_digi[value - 1], 1, 1);
    for (int side : {2, 1}) {
        auto* b = new QPushButton(
            side == 2 ? QStringLiteral("Browse(Output)") : QStringLiteral("Browse(Input)"), box);
        b->setObjectName(QStringLiteral("btnRef%1%2").arg(value).arg(side == 2 ? "Out" : "In"));
        b->setAutoDefault(false);
        connect(b, &QPushButton::clicked, this, [this, value, side] { browse(value, side); });
        m_browse[value - 1][side - 1] = b;
        grid->addWidget(b, side == 2 ? 0 : 1, 2);
    }
    return box;
}

QPushButton* fFind::BTN(int index) const {
    return index >= 1 && index <= 4 ? m_buttons[index - 1] : nullptr;
}

QPushButton* fFind::btnRef(int value, int side) const {
    return m_browse[value == 2 ? 1 : 0][side == 2 ? 1 : 0];
}

QString fFind::lblDigi(int value) const {
    return m_digi[value == 2 ? 1 : 0]->text();
}

QString fFind::lblCategory(int value) const {
    return m_category[value == 2 ? 1 : 0]->text();
}

void fFind::open() {
    m_finder.open();
    refresh();
}

void fFind::refresh() {
    const FunctionName* values[] = {&m_finder.findValue(), &m_finder.replaceValue()};
    for (int i = 0; i < 2; ++i) {
        m_digi[i]->setText(values[i]->digital);
        m_category[i]->setText(values[i]->category);
    }
    // The replacement opens with the first press of Replace; the comparison program is
    // never changed.
    m_replaceBox->setEnabled(m_finder.replaceEnabled());
    m_buttons[2]->setEnabled(m_finder.canReplace());
    m_buttons[3]->setEnabled(m_finder.canReplace());
}

void fFind::browse(int value, int side) {
    if (!m_chooser)
        return;
    const FunctionName& current = value == 1 ? m_finder.findValue() : m_finder.replaceValue();
    const CSelections& sels = side == 2 ? m_editor.selout() : m_editor.selinp();
    const int preset =
        current.category.isEmpty() ? -1 : sels.ValueByDigital(current.category, current.digital);
    const std::optional<int> chosen = m_chooser(side, preset, m_editor.sheet().row());
    const CSelection* entry = chosen ? sels.Item(QString::number(qint16(*chosen))) : nullptr;
    if (!entry)
        return;
    const FunctionName name{entry->Digital, sels.CategoryByValue(qint16(*chosen))};
    if (value == 1)
        m_finder.setFindValue(name, side);
    else
        m_finder.setReplaceValue(name, side);
    refresh();
}

void fFind::nextOp() {
    m_finder.Next();
    refresh();
}

void fFind::replaceOp() {
    m_finder.Replace();
    refresh();
}

void fFind::replaceAllOp() {
    const int count = m_finder.ReplaceAll();
    refresh();
    if (count == 0)
        return; // nothing replaced: the window stays
    close();
    Q_EMIT replacedAll(count);
}

void fFind::hideEvent(QHideEvent* event) {
    if (!event->spontaneous())
        m_finder.close();
    QDialog::hideEvent(event);
}

} // namespace vkm
