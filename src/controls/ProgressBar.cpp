#include "controls/ProgressBar.h"

#include <QEvent>
#include <QProgressBar>
#include <algorithm>
#include <limits>

namespace kelvora {

namespace {

constexpr int kBlockLength = 7; // length of one block when the bar is not smooth
constexpr int kBlockGap = 1;    // half the space between two blocks
constexpr int kHintLength = 160;
constexpr int kHintThickness = 18;
constexpr int kSunkenEdgeWidth = 2;

bool FitsInt(qint64 value) {
    return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
}

QString CssColour(const QColor& colour) {
    return colour.name(QColor::HexRgb);
}

} // namespace

ProgressBar::ProgressBar(QWidget* parent) : QFrame(parent) {
    CreateBar();
}

int ProgressBar::ScaledValue(qint64 value, qint64 min, qint64 max) {
    const qint64 low = std::min(min, max);
    const qint64 high = std::max(min, max);
    value = std::clamp(value, low, high);
    if (FitsInt(low) && FitsInt(high)) {
        return static_cast<int>(value);
    }
    // Long double keeps the difference exact enough even for the full 64-bit span.
    const long double share = (static_cast<long double>(value) - static_cast<long double>(low)) /
                              (static_cast<long double>(high) - static_cast<long double>(low));
    return static_cast<int>(share * kScaledRange);
}

void ProgressBar::CreateBar() {
    // The orientation and the block look belong to the bar as it is built, so a change of
    // either builds it anew and shows the kept position on the new one.
    delete m_bar;
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("ProgressWindow"));
    m_bar->setTextVisible(false);
    m_bar->setOrientation(m_orientation == Vertical ? Qt::Vertical : Qt::Horizontal);
    setSizePolicy(m_orientation == Vertical
                      ? QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding)
                      : QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed));
    ApplyRange();
    ApplyLook();
    ApplyBorder();
    m_bar->show();
}

void ProgressBar::ApplyRange() {
    const qint64 low = std::min(m_min, m_max);
    const qint64 high = std::max(m_min, m_max);
    m_position = std::clamp(m_position, low, high);
    if (FitsInt(low) && FitsInt(high)) {
        m_bar->setRange(static_cast<int>(low), static_cast<int>(high));
    } else {
        m_bar->setRange(0, kScaledRange);
    }
    m_bar->setValue(ScaledValue(m_position, m_min, m_max));
}

void ProgressBar::ApplyLook() {
    const QColor back = TranslateOleColor(m_backColor, palette());
    const QColor fore = TranslateOleColor(m_foreColor, palette());
    QString bar = QStringLiteral("QProgressBar { border-radius: 0px; ");
    bar += m_borderStyle == BorderThinBar ? QStringLiteral("border: 1px solid %1; ")
                                                .arg(CssColour(palette().color(QPalette::Mid)))
                                          : QStringLiteral("border: none; ");
    if (back.isValid()) {
        bar += QStringLiteral("background-color: %1; ").arg(CssColour(back));
    }
    bar += QStringLiteral("} QProgressBar::chunk { ");
    if (fore.isValid()) {
        bar += QStringLiteral("background-color: %1; ").arg(CssColour(fore));
    }
    if (!m_smooth) {
        bar +=
            QStringLiteral("%1: %2px; margin: %3px; ")
                .arg(m_orientation == Vertical ? QStringLiteral("height") : QStringLiteral("width"))
                .arg(kBlockLength)
                .arg(kBlockGap);
    }
    bar += u'}';
    m_bar->setStyleSheet(bar);
}

void ProgressBar::ApplyBorder() {
    setFrameStyle(m_borderStyle == BorderSunkenControl ? QFrame::Panel | QFrame::Sunken
                                                       : QFrame::NoFrame);
    setLineWidth(kSunkenEdgeWidth);
    m_bar->setGeometry(contentsRect());
}

void ProgressBar::SetOrientation(int orientation) {
    if ((orientation != Horizontal && orientation != Vertical) || orientation == m_orientation) {
        return;
    }
    m_orientation = orientation;
    CreateBar();
    updateGeometry();
    emit PropertyChanged(QStringLiteral("Orientation"));
}

void ProgressBar::SetMin(qint64 min) {
    if (min == m_min) {
        return;
    }
    m_min = min;
    ApplyRange();
    emit PropertyChanged(QStringLiteral("Min"));
}

void ProgressBar::SetMax(qint64 max) {
    if (max == m_max) {
        return;
    }
    m_max = max;
    ApplyRange();
    emit PropertyChanged(QStringLiteral("Max"));
}

void ProgressBar::SetSmooth(bool smooth) {
    if (smooth == m_smooth) {
        return;
    }
    m_smooth = smooth;
    CreateBar();
    emit PropertyChanged(QStringLiteral("Smooth"));
}

void ProgressBar::SetBorderStyle(int style) {
    if (style < BorderNone || style > BorderSunkenControl || style == m_borderStyle) {
        return;
    }
    m_borderStyle = style;
    ApplyLook();
    ApplyBorder();
    emit PropertyChanged(QStringLiteral("BorderStyle"));
}

void ProgressBar::SetBackColor(OleColor colour) {
    if (colour == m_backColor) {
        return;
    }
    m_backColor = colour;
    ApplyLook();
    emit PropertyChanged(QStringLiteral("BackColor"));
}

void ProgressBar::SetForeColor(OleColor colour) {
    if (colour == m_foreColor) {
        return;
    }
    m_foreColor = colour;
    ApplyLook();
    emit PropertyChanged(QStringLiteral("ForeColor"));
}

void ProgressBar::SetPosition(qint64 position) {
    position = std::clamp(position, std::min(m_min, m_max), std::max(m_min, m_max));
    if (position == m_position) {
        return;
    }
    m_position = position;
    m_bar->setValue(ScaledValue(m_position, m_min, m_max));
}

void ProgressBar::SetStep(int step) {
    if (step == m_step) {
        return;
    }
    m_step = step;
    emit PropertyChanged(QStringLiteral("Step"));
}

void ProgressBar::StepIt() {
    const qint64 low = std::min(m_min, m_max);
    const qint64 high = std::max(m_min, m_max);
    qint64 next = m_position + m_step;
    if (next > high) {
        next = low;
    } else if (next < low) {
        next = high;
    }
    SetPosition(next);
}

QSize ProgressBar::sizeHint() const {
    const int frame = 2 * frameWidth();
    return m_orientation == Vertical ? QSize(kHintThickness + frame, kHintLength + frame)
                                     : QSize(kHintLength + frame, kHintThickness + frame);
}

void ProgressBar::WriteProperties(PropertyBag& bag) const {
    bag.WriteProperty(QStringLiteral("Orientation"), m_orientation, kDefaultOrientation);
    bag.WriteProperty(QStringLiteral("Min"), m_min, kDefaultMin);
    bag.WriteProperty(QStringLiteral("Max"), m_max, kDefaultMax);
    bag.WriteProperty(QStringLiteral("Smooth"), m_smooth, kDefaultSmooth);
    bag.WriteProperty(QStringLiteral("BorderStyle"), m_borderStyle, kDefaultBorderStyle);
    bag.WriteProperty(QStringLiteral("BackColor"), m_backColor, kDefaultBackColor);
    bag.WriteProperty(QStringLiteral("ForeColor"), m_foreColor, kDefaultForeColor);
    bag.WriteProperty(QStringLiteral("Step"), m_step, kDefaultStep);
}

void ProgressBar::ReadProperties(const PropertyBag& bag) {
    const auto read = [&bag](const char* name, const QVariant& fallback) {
        return bag.ReadProperty(QString::fromLatin1(name), fallback);
    };
    SetOrientation(read("Orientation", kDefaultOrientation).toInt());
    SetMin(read("Min", kDefaultMin).toLongLong());
    SetMax(read("Max", kDefaultMax).toLongLong());
    SetSmooth(read("Smooth", kDefaultSmooth).toBool());
    SetBorderStyle(read("BorderStyle", kDefaultBorderStyle).toInt());
    SetBackColor(read("BackColor", kDefaultBackColor).toUInt());
    SetForeColor(read("ForeColor", kDefaultForeColor).toUInt());
    SetStep(read("Step", kDefaultStep).toInt());
}

void ProgressBar::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    m_bar->setGeometry(contentsRect());
}

void ProgressBar::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        ApplyLook();
    }
}

} // namespace kelvora
