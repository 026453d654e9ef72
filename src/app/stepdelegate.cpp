#include "stepdelegate.h"

#include "editorresources.h"
#include "steptablemodel.h"

#include "base/errorreporter.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPixmapCache>

namespace vkm {

namespace {
const QString kStar = QString::fromLatin1(StepSheet::kStar);

bool isFunctionKind(int kind) {
    return CellRules::editorFor(kind) == CellEditor::Function;
}
} // namespace

StepDelegate::StepDelegate(QObject* parent) : QStyledItemDelegate(parent) {
    ensureEditorResources();
}

void StepDelegate::prepare(CellEditor editor, const QString& comboList, std::optional<QString> initialText) {
    m_editor = editor;
    m_comboList = comboList;
    m_initialText = std::move(initialText);
}

QString StepDelegate::picturePath(int kind, const QString& text) {
    if (text.isEmpty() || text == kStar)
        return {};
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok)
        return {};
    switch (kind) {
    case KindLogic:
        return cellPicturePath(QStringLiteral("bLogic"), value);
    case KindDelayKind:
        return cellPicturePath(QStringLiteral("bDelayKind"), value);
    case KindState:
        return cellPicturePath(QStringLiteral("bJyotai"), value);
    case KindRel:
        return cellPicturePath(QStringLiteral("bRel"), value);
    default:
        return {};
    }
}

QFont StepDelegate::categoryFont() {
    static const QString family = QFontDatabase::hasFamily(QStringLiteral("Tahoma"))
                                      ? QStringLiteral("Tahoma")
                                      : QStringLiteral("DejaVu Sans");
    QFont f(family);
    f.setPixelSize(8);
    return f;
}

bool StepDelegate::drawPicture(QPainter* painter, const QRect& rect, const QString& path) const {
    QPixmap pm;
    if (!QPixmapCache::find(path, &pm)) {
        if (!pm.load(path)) {
            // Reported once per picture: painting runs often and a box per paint would lock
            // the user out of the window.
            if (!m_reportedMissing.contains(path)) {
                m_reportedMissing.insert(path);
                reportError(ErrFileNotFound, QStringLiteral("DrawBmp"), path);
            }
            return false;
        }
        QPixmapCache::insert(path, pm);
    }
    const QSize size = pm.size().boundedTo(rect.size() - QSize(2, 0));
    const QRect target(QPoint(rect.left() + 2, rect.top() + (rect.height() - size.height()) / 2), size);
    painter->drawPixmap(target, pm, QRect(QPoint(0, 0), size));
    return true;
}

void StepDelegate::drawBorders(QPainter* painter, const QRect& rect, const QModelIndex& index) const {
    // One-pixel rectangles rather than lines: the grid paints hundreds of them and a filled
    // rectangle is far cheaper for the raster engine than a stroked line.
    static const QColor border = QColor::fromRgb(sheetcolor::CellBorder);
    static const QColor gridLine = QColor::fromRgb(sheetcolor::GridLine);
    painter->fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), border);
    // Where one group ends and the next begins the border is the grid-line grey.
    const QVariant next = index.siblingAtColumn(index.column() + 1).data(StepTableModel::KindRole);
    const bool groupEnd = !next.isValid() || next.toInt() == KindOutKino || next.toInt() == KindInpKino;
    painter->fillRect(QRect(rect.right(), rect.top(), 1, rect.height()), groupEnd ? gridLine : border);
}

void StepDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    const int kind = index.data(StepTableModel::KindRole).toInt();
    const QString text = index.data(StepTableModel::CellTextRole).toString();
    const QRect r = option.rect;
    painter->save();
    painter->fillRect(r, index.data(Qt::BackgroundRole).value<QColor>());

    bool drawn = false;
    const QString picture = index.row() > 0 ? picturePath(kind, text) : QString();
    if (!picture.isEmpty())
        drawn = drawPicture(painter, r, picture);
    if (!drawn) {
        QRect textRect = r.adjusted(3, 0, -2, 0);
        int align = Qt::AlignLeft | Qt::AlignVCenter;
        if (index.row() > 0 && isFunctionKind(kind) && !text.isEmpty() && text != kStar) {
            painter->setFont(categoryFont());
            painter->setPen(QColor::fromRgb(sheetcolor::CategoryText));
            painter->drawText(r.adjusted(2, 1, -1, 0), Qt::AlignLeft | Qt::AlignTop,
                              index.data(StepTableModel::CategoryRole).toString());
            textRect = r.adjusted(3, 7, -2, 0);
        }
        if (text == kStar)
            align = Qt::AlignCenter;
        const QString shown = index.data(Qt::DisplayRole).toString();
        if (!shown.isEmpty()) {
            painter->setFont(option.font);
            painter->setPen(index.data(Qt::ForegroundRole).value<QColor>());
            painter->drawText(textRect, align, shown);
        }
    }
    drawBorders(painter, r, index);
    if (option.state & QStyle::State_Selected) {
        QColor c = option.palette.color(QPalette::Highlight);
        c.setAlpha(70);
        painter->fillRect(r.adjusted(0, 0, -1, -1), c);
    }
    if (option.state & QStyle::State_HasFocus) {
        painter->setPen(QPen(option.palette.color(QPalette::Highlight), 2));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(r.adjusted(1, 1, -2, -2));
    }
    painter->restore();
}

QWidget* StepDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                    const QModelIndex& index) const {
    if (m_editor == CellEditor::Combo) {
        auto* combo = new QComboBox(parent);
        for (const QString& entry : m_comboList.split(QLatin1Char('|'), Qt::SkipEmptyParts)) {
            const int semi = entry.indexOf(QLatin1Char(';'));
            if (entry.startsWith(QLatin1Char('#')) && semi > 1)
                combo->addItem(entry.mid(semi + 1), entry.mid(1, semi - 1));
        }
        return combo;
    }
    auto* edit = new QLineEdit(parent);
    edit->setFrame(false);
    if (index.data(StepTableModel::KindRole).toInt() == KindRemark) {
        // Remarks may be Japanese: the input method stays on in this cell.
        edit->setAttribute(Qt::WA_InputMethodEnabled, true);
        edit->setInputMethodHints(Qt::ImhNone);
    } else {
        edit->setInputMethodHints(Qt::ImhPreferLatin | Qt::ImhNoPredictiveText);
    }
    return edit;
}

void StepDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    const QString text = m_initialText.value_or(index.data(Qt::EditRole).toString());
    const bool typed = m_initialText.has_value();
    m_initialText.reset();
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        const int at = combo->findData(text);
        combo->setCurrentIndex(at >= 0 ? at : (typed ? 0 : -1));
        return;
    }
    if (auto* edit = qobject_cast<QLineEdit*>(editor)) {
        edit->setText(text);
        if (!typed)
            edit->selectAll();
    }
}

void StepDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const {
    if (auto* combo = qobject_cast<QComboBox*>(editor)) {
        m_refused = combo->currentIndex() >= 0 &&
                    !model->setData(index, combo->currentData().toString(), Qt::EditRole);
        return;
    }
    if (auto* edit = qobject_cast<QLineEdit*>(editor)) {
        m_refused = !model->setData(index, edit->text(), Qt::EditRole);
        if (auto* steps = qobject_cast<StepTableModel*>(model); m_refused && steps)
            m_restoreText = steps->refusedText();
    }
}

bool StepDelegate::eventFilter(QObject* object, QEvent* event) {
    auto* edit = qobject_cast<QLineEdit*>(object);
    auto* combo = qobject_cast<QComboBox*>(object);
    if (!edit && !combo)
        return QStyledItemDelegate::eventFilter(object, event);
    // The message box of a refused text takes the focus for a moment: that is no leaving.
    if (m_committing && (event->type() == QEvent::FocusOut || event->type() == QEvent::FocusIn))
        return true;
    if (event->type() != QEvent::KeyPress)
        return QStyledItemDelegate::eventFilter(object, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool tab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!tab && !(enter && edit))
        return QStyledItemDelegate::eventFilter(object, event);
    // The view would open the neighbour's editor itself on Tab, past every rule of that
    // cell: the edit ends here and the window moves the current cell instead.
    if (commitAndClose(static_cast<QWidget*>(object)) && tab)
        Q_EMIT tabbedOut(key == Qt::Key_Tab ? 1 : -1);
    return true;
}

bool StepDelegate::commitAndClose(QWidget* editor) {
    m_refused = false;
    m_committing = true;
    Q_EMIT commitData(editor);
    m_committing = false;
    if (m_refused) {
        if (auto* edit = qobject_cast<QLineEdit*>(editor)) {
            edit->setText(m_restoreText);
            edit->selectAll();
        }
        // The message box had the keyboard: give it back to the editor's window and cell.
        editor->window()->activateWindow();
        editor->setFocus();
        return false;
    }
    Q_EMIT closeEditor(editor, QAbstractItemDelegate::NoHint);
    return true;
}

void StepDelegate::abandon(QWidget* editor) {
    Q_EMIT closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
}

} // namespace vkm
