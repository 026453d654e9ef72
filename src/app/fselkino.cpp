#include "fselkino.h"
#include "tabchain.h"

#include "editorresources.h"
#include "windowplacement.h"

#include "base/errorreporter.h"
#include "base/number.h"
#include "base/prompter.h"
#include "base/settings.h"
#include "catalogue/cselections.h"
#include "model/codes.h"
#include "model/stepnumberentry.h"
#include "model/steprules.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <cmath>

namespace vkm {

const QString fSelKino::kStepNodeText = QStringLiteral("Click here to input step number.");

namespace {
// The smallest window size, in twips.
constexpr int kMinWidth = 5490;
constexpr int kMinHeight = 3525;

const QString kStepKey = QStringLiteral("StepInput");
const QString kStepKey2 = QStringLiteral("StepInput2");
} // namespace

fSelKino::fSelKino(Settings* settings, Prompter& prompter, QWidget* parent)
    : QDialog(parent), m_settings(settings), m_prompter(prompter) {
    ensureEditorResources();
    setWindowTitle(QStringLiteral("Select function"));
    setObjectName(QStringLiteral("fSelKino"));

    m_tBar = new QToolBar(this);
    m_tBar->setIconSize(QSize(16, 16));
    QAction* find = m_tBar->addAction(editorIcon(QStringLiteral("keyFind")), QStringLiteral("Find"));
    find->setObjectName(QStringLiteral("keyFind"));
    find->setToolTip(QStringLiteral("Find (CTRL+F)"));
    connect(find, &QAction::triggered, this, &fSelKino::findOp);

    m_tBarCate = new QToolBar(this);
    m_tBarCate->setIconSize(QSize(16, 16));

    m_tv = new QTreeWidget(this);
    m_tv->setHeaderHidden(true);
    m_tv->setColumnCount(1);
    m_tv->setUniformRowHeights(false);
    m_tv->installEventFilter(this);
    connect(m_tv, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { onItemClicked(item); });
    connect(m_tv, &QTreeWidget::itemDoubleClicked, this,
            [this](QTreeWidgetItem* item) { onItemDoubleClicked(item); });

    m_chk = new QCheckBox(QStringLiteral("Expand all items in opening."), this);
    connect(m_chk, &QCheckBox::clicked, this, [this](bool on) {
        if (m_settings)
            m_settings->set(keys::DoesExpandTree, on ? 1 : 0);
        setExpandAll(on);
    });

    m_btnSelect = new QPushButton(QStringLiteral("&Select"), this);
    m_btnCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    m_btnSelect->setAutoDefault(false);
    m_btnCancel->setAutoDefault(false);
    setTabChain({m_tv, m_chk, m_btnSelect, m_btnCancel});
    connect(m_btnSelect, &QPushButton::clicked, this, &fSelKino::selectOp);
    connect(m_btnCancel, &QPushButton::clicked, this, &fSelKino::cancelOp);

    auto* bars = new QHBoxLayout;
    bars->addWidget(m_tBar);
    bars->addWidget(m_tBarCate, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_btnSelect);
    buttons->addWidget(m_btnCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bars);
    layout->addWidget(m_tv, 1);
    layout->addWidget(m_chk);
    layout->addLayout(buttons);

    setMinimumSize(twipsToPixels(kMinWidth), twipsToPixels(kMinHeight));
}

int fSelKino::twipsToPixels(int twips) const {
    return vkm::twipsToPixels(twips, logicalDpiX());
}

void fSelKino::showLocal(const QString& text, int style) {
    m_prompter.showText(text, style);
}

bool fSelKino::ensureSettings() {
    if (!m_settings)
        return false;
    bool ok = m_settings->ensure(keys::DoesExpandTree);
    const PlacementKeys& p = placementKeys();
    ok = m_settings->ensure(p.left) && ok;
    ok = m_settings->ensure(p.top) && ok;
    ok = m_settings->ensure(p.width) && ok;
    ok = m_settings->ensure(p.height) && ok;
    return ok;
}

void fSelKino::placeWindow() {
    QRect r = storedPlacement(m_settings, placementKeys(), logicalDpiX());
    r.setSize(r.size().expandedTo(QSize(twipsToPixels(kMinWidth), twipsToPixels(kMinHeight))));
    setGeometry(r);
}

void fSelKino::SaveFormPosition() {
    if (m_settings)
        storePlacement(*m_settings, placementKeys(), geometry(), logicalDpiX());
}

void fSelKino::Form_Load() {
    IsLoaded = true;
    if (!ensureSettings())
        showLocal(QStringLiteral("Failed to read registry. "), 1);
    placeWindow();
    m_tv->setIconSize(QSize(16, 16));
    if (m_tv->topLevelItemCount() == 0) {
        BuildTree();
        SelectTopNode();
    }
    const bool expand = m_settings && m_settings->value(keys::DoesExpandTree) == 1;
    m_chk->setChecked(expand);
}

QTreeWidgetItem* fSelKino::addCategoryNode(const QString& category) {
    auto* node = new QTreeWidgetItem(m_tv, QStringList{category});
    node->setData(0, KeyRole, category + "key");
    node->setIcon(0, editorIcon(QStringLiteral("keyParent")));
    QFont f = node->font(0);
    f.setBold(true);
    f.setPointSize(9);
    node->setFont(0, f);
    node->setForeground(0, In_or_Out == 2 ? QColor(0, 64, 128) : QColor(255, 0, 128));
    m_categoryKeys << category + "key";
    m_categoryNodes.insert(category, node);
    return node;
}

void fSelKino::addStepNode(const QString& category, const QString& key) {
    QTreeWidgetItem* parent = m_categoryNodes.value(category);
    if (!parent) {
        // The catalogue has no such category: the step node cannot be placed.
        reportError(ErrSubscript, QStringLiteral("BuildTree"));
        return;
    }
    auto* node = new QTreeWidgetItem(parent, QStringList{kStepNodeText});
    node->setData(0, KeyRole, key);
}

void fSelKino::BuildTree() {
    m_tv->clear();
    m_categoryKeys.clear();
    m_categoryNodes.clear();
    if (!sels)
        return;
    for (const CSelection& e : sels->entries())
        if (!m_categoryNodes.contains(e.Category))
            addCategoryNode(e.Category);
    const QString arrow = In_or_Out == 2 ? QStringLiteral("keyRArrowBlue") : QStringLiteral("keyRArrowRed");
    QFont small = m_tv->font();
    small.setPointSize(8);
    for (const CSelection& e : sels->entries()) {
        if (isStepTargetCategory(e.Category))
            continue;
        auto* node =
            new QTreeWidgetItem(m_categoryNodes.value(e.Category), QStringList{e.Digital + '\t' + e.Advice});
        node->setData(0, KeyRole, QString::number(e.value) + "key");
        node->setData(0, TagRole, int(e.value));
        node->setData(0, DigitalRole, e.Digital);
        node->setFont(0, small);
        QIcon icon = editorIcon(arrow);
        icon.addPixmap(editorPixmap(QStringLiteral("keyRArrow2")), QIcon::Selected);
        node->setIcon(0, icon);
    }
    if (VMKKind == 3) {
        if (In_or_Out == 2) {
            addStepNode(cat::JMP, kStepKey);
            addStepNode(cat::CALL, kStepKey2);
        } else {
            addStepNode(cat::STEP, kStepKey);
        }
    }
    if (m_settings && m_settings->value(keys::DoesExpandTree) == 1)
        setExpandAll(true);
    if (VMKKind == 3) {
        BuildCategoryBar();
        m_tBarCate->show();
    } else {
        m_tBarCate->clear();
        m_tBarCate->hide();
    }
}

void fSelKino::BuildCategoryBar() {
    m_tBarCate->clear();
    for (const QString& key : std::as_const(m_categoryKeys)) {
        const QString category = key.left(key.size() - 3);
        QAction* a = m_tBarCate->addAction(editorIconNoCase(QStringLiteral("keyCate") + category), category);
        a->setObjectName(key);
        a->setToolTip(category);
        connect(a, &QAction::triggered, this, [this, key] { onCategoryButton(key); });
    }
}

void fSelKino::onCategoryButton(const QString& key) {
    QTreeWidgetItem* node = findNodeByKey(key);
    if (!node)
        return;
    node->setExpanded(!node->isExpanded());
    m_tv->setCurrentItem(node);
    m_tv->scrollToItem(node, QAbstractItemView::PositionAtTop);
}

QTreeWidgetItem* fSelKino::categoryNode(const QString& category) const {
    return m_categoryNodes.value(category);
}

QList<QTreeWidgetItem*> fSelKino::allNodes() const {
    QList<QTreeWidgetItem*> out;
    for (int i = 0; i < m_tv->topLevelItemCount(); ++i) {
        QTreeWidgetItem* top = m_tv->topLevelItem(i);
        out << top;
        for (int j = 0; j < top->childCount(); ++j)
            out << top->child(j);
    }
    return out;
}

QTreeWidgetItem* fSelKino::findNodeByKey(const QString& key) const {
    for (QTreeWidgetItem* n : allNodes())
        if (n->data(0, KeyRole).toString() == key)
            return n;
    return nullptr;
}

void fSelKino::SelectTopNode() {
    QTreeWidgetItem* top = m_tv->topLevelItem(0);
    if (!top)
        return;
    m_tv->setCurrentItem(top);
    top->setSelected(true);
    m_tv->scrollToItem(top, QAbstractItemView::PositionAtTop);
    // The keys go to the tree, so that Enter acts on the node.
    m_tv->setFocus();
}

void fSelKino::ClearStepTagVariant() {
    if (VMKKind != 3)
        return;
    if (QTreeWidgetItem* n = findNodeByKey(kStepKey))
        n->setData(0, TagRole, 0);
}

void fSelKino::DoesKillCUNT(bool kill) {
    if (QTreeWidgetItem* n = m_categoryNodes.value(cat::COUNT))
        n->setHidden(kill);
}

void fSelKino::setExpandAll(bool expand) {
    for (int i = 0; i < m_tv->topLevelItemCount(); ++i)
        m_tv->topLevelItem(i)->setExpanded(expand);
    if (QTreeWidgetItem* top = m_tv->topLevelItem(0))
        m_tv->scrollToItem(top, QAbstractItemView::PositionAtTop);
}

void fSelKino::unload() {
    hide();
    m_tv->clear();
    m_categoryKeys.clear();
    m_categoryNodes.clear();
    m_tBarCate->clear();
    IsLoaded = false;
}

void fSelKino::selectOp() {
    SaveFormPosition();
    QTreeWidgetItem* node = m_tv->currentItem();
    if (!node || !node->isSelected()) {
        showLocal(QStringLiteral("Select again."));
        return;
    }
    if (!node->parent()) {
        showLocal(QStringLiteral("You cannnot select category!"));
        m_tv->setFocus();
        return;
    }
    const QVariant tag = node->data(0, TagRole);
    if (node->text(0) == kStepNodeText && (!tag.isValid() || tag.toInt() == 0)) {
        showLocal(QStringLiteral("Input step value."));
        return;
    }
    retValue = qint16(tag.toInt());
    done(QDialog::Accepted); // hidden, still loaded with its tree
}

void fSelKino::cancelOp() {
    SaveFormPosition();
    retValue = orgValue;
    done(QDialog::Rejected);
    unload();
}

void fSelKino::reject() {
    cancelOp();
}

void fSelKino::findOp() {
    QString previous;
    for (;;) {
        const std::optional<QString> answer = m_prompter.inputText(
            QStringLiteral("Find"), QStringLiteral("Input digital character to find."), previous.toUpper());
        if (!answer)
            return;
        if (answer->isEmpty())
            continue;
        previous = *answer;
        const QString wanted = answer->toUpper();
        for (QTreeWidgetItem* n : allNodes()) {
            const QVariant digital = n->data(0, DigitalRole);
            if (digital.isValid() && digital.toString().toUpper() == wanted) {
                m_tv->setCurrentItem(n);
                m_tv->scrollToItem(n);
                m_tv->setFocus();
                return;
            }
        }
        showLocal(QStringLiteral("Not found."));
    }
}

bool fSelKino::stepNumberEntry(QTreeWidgetItem* node) {
    const QString category = node->parent() ? node->parent()->text(0) : QString();
    for (;;) {
        const std::optional<QString> answer = m_prompter.inputText(QString(), stepNumberPrompt(), QString());
        if (!answer)
            return false;
        const StepNumberAnswer checked = checkStepNumber(*answer, category);
        if (!checked.accepted) {
            if (!checked.message.isEmpty())
                showLocal(checked.message);
            continue;
        }
        node->setData(0, TagRole, int(checked.value));
        m_tv->setCurrentItem(node);
        selectOp();
        return true;
    }
}

void fSelKino::onItemClicked(QTreeWidgetItem* item) {
    // Only a mouse click asks for a step number: moving onto the node with the keys does not.
    if (item && item->text(0) == kStepNodeText)
        stepNumberEntry(item);
}

void fSelKino::onItemDoubleClicked(QTreeWidgetItem* item) {
    if (item && item->childCount() == 0 && item->parent() && item->text(0) != kStepNodeText)
        selectOp();
}

bool fSelKino::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_tv && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_F && key->modifiers() == Qt::ControlModifier) {
            findOp();
            return true;
        }
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            selectOp();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace vkm
