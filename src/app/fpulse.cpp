#include "fpulse.h"
#include "tabchain.h"

#include "base/settings.h"
#include "catalogue/cselections.h"
#include "sheet/pulsegeometry.h"
#include "sheet/stepsheeteditor.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPainter>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTimer>
#include <QVBoxLayout>

namespace vkm {

namespace {
// The symbol area and the function box in it, in pixels.
constexpr QSize kCanvas(420, 200);
constexpr QRect kPicKino(12, 56, 136, 88);
constexpr QSize kDelayBox(64, 40);

// Function names are upper case, whatever is typed.
class UpperCase : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& input, int&) const override {
        input = input.toUpper();
        return Acceptable;
    }
};
} // namespace

// The light green area with the function box on the left and the pulse symbol drawn from
// its right edge, the delay boxes beside the symbol.
class PulseCanvas : public QWidget {
public:
    explicit PulseCanvas(QWidget* parent) : QWidget(parent) {
        setObjectName(QStringLiteral("pic"));
        setFixedSize(kCanvas);
    }
    void setLogic(int logic) {
        m_logic = logic;
        update();
    }
    QPoint origin() const { return {kPicKino.right() + 1, kPicKino.top() + kPicKino.height() / 2}; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor::fromRgb(sheetcolor::OutputCell));
        painter.setPen(QPen(Qt::black, 1, Qt::DotLine));
        painter.drawLines(pulseSymbol(m_logic, origin()));
    }

private:
    int m_logic = -1;
};

fPulse::fPulse(StepSheetEditor& editor, Settings* settings, FunctionChooser chooser, QWidget* parent)
    : QDialog(parent, Qt::Tool), m_editor(editor), m_settings(settings), m_chooser(std::move(chooser)) {
    setObjectName(QStringLiteral("fPulse"));
    setWindowTitle(QStringLiteral("Pulse output"));
    setModal(false);
    // It opens by itself as the cursor reaches a pulse: the keys stay in the grid.
    setAttribute(Qt::WA_ShowWithoutActivating);
    buildFace();
    ResetFace();
}

void fPulse::buildFace() {
    m_line = new QLabel(this);
    m_line->setObjectName(QStringLiteral("lblLine"));
    m_canvas = new PulseCanvas(this);

    auto* picKino = new QFrame(m_canvas);
    picKino->setObjectName(QStringLiteral("picKino"));
    picKino->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    picKino->setGeometry(kPicKino);
    m_kino = new QLineEdit(picKino);
    m_kino->setObjectName(QStringLiteral("txtKino"));
    m_kino->setValidator(new UpperCase(m_kino));
    m_category = new QLabel(picKino);
    m_category->setObjectName(QStringLiteral("lblCategory"));
    auto* kinoLayout = new QVBoxLayout(picKino);
    kinoLayout->setContentsMargins(6, 4, 6, 4);
    kinoLayout->setSpacing(1);
    kinoLayout->addWidget(new QLabel(QStringLiteral("Output"), picKino));
    kinoLayout->addWidget(m_category);
    kinoLayout->addWidget(m_kino);
    kinoLayout->addWidget(new QLabel(QStringLiteral("F2=Select"), picKino));

    const QString names[2] = {QStringLiteral("Delay1"), QStringLiteral("Delay2")};
    for (int i = 0; i < 2; ++i) {
        auto* box = new QWidget(m_canvas);
        box->setObjectName(QStringLiteral("picDelay%1").arg(i + 1));
        box->setFixedSize(kDelayBox);
        auto* edit = new QLineEdit(box);
        edit->setObjectName(QStringLiteral("txtDelay%1").arg(i + 1));
        // Delays are whole numbers: only digits can be typed.
        edit->setValidator(
            new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]*")), edit));
        auto* layout = new QVBoxLayout(box);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(new QLabel(names[i], box));
        layout->addWidget(edit);
        m_delayBox[i] = box;
        (i == 0 ? m_delay1 : m_delay2) = edit;
    }

    auto* picWaku1 = new QFrame(this);
    picWaku1->setObjectName(QStringLiteral("picWaku1"));
    picWaku1->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    m_logic = new QComboBox(picWaku1);
    m_logic->setObjectName(QStringLiteral("cboLogic"));
    m_logic->addItems(PulsePair::logicNames());
    m_kind = new QComboBox(picWaku1);
    m_kind->setObjectName(QStringLiteral("cboDelayKind"));
    m_kind->addItems(PulsePair::kindNames());
    auto* choices = new QGridLayout(picWaku1);
    choices->addWidget(new QLabel(QStringLiteral("Logic"), picWaku1), 0, 0);
    choices->addWidget(m_logic, 0, 1);
    choices->addWidget(new QLabel(QStringLiteral("Delay kind"), picWaku1), 0, 2);
    choices->addWidget(m_kind, 0, 3);
    connect(m_logic, &QComboBox::currentIndexChanged, this, [this](int logic) {
        m_canvas->setLogic(logic);
        placeDelays();
    });

    m_decide = new QPushButton(QStringLiteral("Decide(&G)"), this);
    m_decide->setObjectName(QStringLiteral("BTN1"));
    m_close = new QPushButton(QStringLiteral("&Close"), this);
    m_close->setObjectName(QStringLiteral("BTN2"));
    for (QPushButton* b : {m_decide, m_close})
        b->setAutoDefault(false);
    connect(m_decide, &QPushButton::clicked, this, &fPulse::decideOp);
    connect(m_close, &QPushButton::clicked, this, &QDialog::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_decide);
    buttons->addWidget(m_close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_line);
    layout->addWidget(m_canvas);
    layout->addWidget(picWaku1);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    for (QLineEdit* edit : {m_kino, m_delay1, m_delay2})
        edit->installEventFilter(this);
    // The pulse from its function along its two delays, then how it is written, then
    // the buttons.
    setTabChain({m_kino, m_delay1, m_delay2, m_logic, m_kind, m_decide, m_close});
}

QWidget* fPulse::pic() const {
    return m_canvas;
}

QString fPulse::lblCategory() const {
    return m_category->text();
}

QString fPulse::lineText() const {
    return m_line->text();
}

// The delay boxes sit where they name a part of the symbol: the start at the first edge,
// the length at the pulse itself.
void fPulse::placeDelays() {
    const QPoint o = m_canvas->origin();
    const int w = kDelayBox.width();
    const int h = kDelayBox.height();
    QPoint start(o.x() + 80 - w / 2, o.y() + 6);
    QPoint length(o.x() + 120 - w / 2, o.y() - 40 - h - 4);
    switch (m_logic->currentIndex()) {
    case 1: // lowered
        start = {o.x() + 80 - w / 2, o.y() - h - 6};
        length = {o.x() + 120 - w / 2, o.y() + 44};
        break;
    case 2: // raised and lowered
        start = {o.x() + 80 - w - 4, o.y() + 6};
        length = {o.x() + 164, o.y() - h - 6};
        break;
    default:
        break;
    }
    m_delayBox[0]->move(start);
    m_delayBox[1]->move(length);
    m_delayBox[0]->show();
    m_delayBox[1]->show();
}

void fPulse::ShowLine(int row) {
    m_line->setText(QStringLiteral("Line ") + QString::number(row));
}

// An empty face: no function, no logic (the symbol only its level line), no kind, the
// delay boxes empty where a raised pulse puts them.
void fPulse::ResetFace() {
    m_logic->setCurrentIndex(-1);
    m_kind->setCurrentIndex(-1);
    m_category->clear();
    m_kino->clear();
    m_delay1->clear();
    m_delay2->clear();
    m_canvas->setLogic(-1);
    placeDelays();
    m_failedBox = nullptr;
}

void fPulse::PasteValue() {
    const PulseValues v = m_editor.pulse().PasteValue(m_editor.sheet().row());
    m_kino->setText(v.kino);
    m_category->setText(v.category);
    m_logic->setCurrentIndex(v.logic);
    m_kind->setCurrentIndex(v.kind);
    m_delay1->setText(v.delay1);
    m_delay2->setText(v.delay2);
    m_failedBox = nullptr;
}

PulseValues fPulse::values() const {
    return {m_kino->text(),         m_category->text(), m_logic->currentIndex(),
            m_kind->currentIndex(), m_delay1->text(),   m_delay2->text()};
}

void fPulse::focusField(PulseField field) {
    QWidget* w = nullptr;
    switch (field) {
    case PulseField::Kino:
        w = m_kino;
        break;
    case PulseField::DelayKind:
        w = m_kind;
        break;
    case PulseField::Delay1:
        w = m_delay1;
        break;
    case PulseField::Delay2:
        w = m_delay2;
        break;
    case PulseField::None:
        return;
    }
    // A box that failed keeps what the user typed for Escape to undo.
    m_skipSave = true;
    w->setFocus();
}

bool fPulse::checkKinoBox() {
    const std::optional<QString> category = m_editor.pulse().checkKino(m_kino->text());
    if (!category)
        return false;
    m_category->setText(*category);
    return true;
}

bool fPulse::checkDelay(int index) {
    const PulseField failed = m_editor.pulse().checkDelayBox(values(), index);
    if (failed == PulseField::DelayKind)
        txtDelay(index)->clear();
    return failed == PulseField::None;
}

void fPulse::decideOp() {
    // A box whose text was refused as it was left is not reported a second time.
    if (m_failedBox && m_failedBox->text() == m_failedText) {
        focusField(m_failedBox == m_kino     ? PulseField::Kino
                   : m_failedBox == m_delay1 ? PulseField::Delay1
                                             : PulseField::Delay2);
        return;
    }
    if (!m_kino->text().trimmed().isEmpty() && !checkKinoBox()) {
        focusField(PulseField::Kino);
        return;
    }
    const PulseField failed = m_editor.pulse().Decide(values(), m_editor.sheet().row());
    focusField(failed);
}

void fPulse::chooseFunction() {
    if (!m_chooser)
        return;
    const QString text = m_kino->text().trimmed();
    const QString category = m_category->text();
    const int preset = category.isEmpty() ? -1 : m_editor.selout().ValueByDigital(category, text);
    const std::optional<int> chosen = m_chooser(2, preset, m_editor.sheet().row());
    m_kino->setFocus();
    if (!chosen)
        return;
    if (const auto function = m_editor.pulse().chosenFunction(*chosen)) {
        m_kino->setText(function->first);
        m_category->setText(function->second);
    }
}

bool fPulse::eventFilter(QObject* watched, QEvent* event) {
    auto* edit = qobject_cast<QLineEdit*>(watched);
    if (!edit)
        return QDialog::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Escape) {
            edit->setText(m_savedText);
            return true;
        }
        if (key == Qt::Key_F2 && edit == m_kino) {
            chooseFunction();
            return true;
        }
        break;
    }
    case QEvent::FocusIn:
        if (!m_skipSave)
            m_savedText = edit->text();
        m_skipSave = false;
        break;
    case QEvent::FocusOut: {
        if (m_validating || static_cast<QFocusEvent*>(event)->reason() == Qt::PopupFocusReason)
            break;
        m_validating = true;
        bool ok = true;
        if (edit == m_kino) {
            if (edit->text().trimmed().isEmpty())
                m_category->clear();
            else
                ok = checkKinoBox();
        } else {
            ok = checkDelay(edit == m_delay1 ? 1 : 2);
            if (!ok && edit->text().isEmpty()) {
                // No delay kind yet: the kind comes first.
                m_validating = false;
                QTimer::singleShot(0, m_kind, [this] { m_kind->setFocus(); });
                return false;
            }
        }
        m_failedBox = ok ? nullptr : edit;
        m_failedText = edit->text();
        if (!ok) {
            m_skipSave = true;
            QTimer::singleShot(0, edit, [edit] { edit->setFocus(); });
        }
        m_validating = false;
        break;
    }
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

QWidget* fPulse::innerArea() const {
    QWidget* top = parentWidget() ? parentWidget()->window() : nullptr;
    if (auto* main = qobject_cast<QMainWindow*>(top); main && main->centralWidget())
        return main->centralWidget();
    return top;
}

void fPulse::placeWindow() {
    QWidget* inner = innerArea();
    if (!inner)
        return;
    const double dpi = logicalDpiX();
    const int storedLeft = m_settings ? m_settings->value(keys::Pulse_Left) : keys::Pulse_Left.defaultValue;
    const int storedTop = m_settings ? m_settings->value(keys::Pulse_Top) : keys::Pulse_Top.defaultValue;
    const QSize size = sizeHint().expandedTo(this->size());
    const PulsePlacement p = placePulseWindow(
        storedLeft, storedTop, pixelsToTwips(inner->width(), dpi), pixelsToTwips(inner->height(), dpi),
        pixelsToTwips(size.width(), dpi), pixelsToTwips(size.height(), dpi));
    if (p.store && m_settings) {
        m_settings->set(keys::Pulse_Left, p.left);
        m_settings->set(keys::Pulse_Top, p.top);
    }
    move(inner->mapToGlobal(QPoint(twipsToPixels(p.left, dpi), twipsToPixels(p.top, dpi))));
}

void fPulse::showEvent(QShowEvent* event) {
    if (!event->spontaneous())
        placeWindow();
    QDialog::showEvent(event);
}

void fPulse::hideEvent(QHideEvent* event) {
    if (!event->spontaneous() && m_settings) {
        if (QWidget* inner = innerArea()) {
            const QPoint at = pos() - inner->mapToGlobal(QPoint(0, 0));
            m_settings->set(keys::Pulse_Left, pixelsToTwips(at.x(), logicalDpiX()));
            m_settings->set(keys::Pulse_Top, pixelsToTwips(at.y(), logicalDpiX()));
        }
    }
    QDialog::hideEvent(event);
}

} // namespace vkm
