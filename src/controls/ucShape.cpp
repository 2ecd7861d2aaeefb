#include "controls/ucShape.h"

#include <QPainter>
#include <QResizeEvent>
#include <algorithm>

namespace kelvora {

namespace {

constexpr int kHintSide = 100;

// PaintGuard keeps a paint from starting while another one is still running.
class PaintGuard {
public:
    explicit PaintGuard(bool& flag) : m_flag(flag), m_entered(!flag) { m_flag = true; }
    ~PaintGuard() {
        if (m_entered) {
            m_flag = false;
        }
    }
    PaintGuard(const PaintGuard&) = delete;
    PaintGuard& operator=(const PaintGuard&) = delete;
    bool Entered() const { return m_entered; }

private:
    bool& m_flag;
    bool m_entered;
};

} // namespace

ucShape::ucShape(QWidget* parent) : QWidget(parent) {
    setMinimumSize(kMinSide, kMinSide);
}

void ucShape::SetColour(OleColor& member, OleColor colour, const QString& name) {
    if (colour == member) {
        return;
    }
    member = colour;
    update();
    emit PropertyChanged(name);
}

void ucShape::SetForeColor(OleColor colour) {
    SetColour(m_foreColor, colour, QStringLiteral("ForeColor"));
}

void ucShape::SetFillColor(OleColor colour) {
    SetColour(m_fillColor, colour, QStringLiteral("FillColor"));
}

void ucShape::SetBackColor(OleColor colour) {
    SetColour(m_backColor, colour, QStringLiteral("BackColor"));
}

void ucShape::SetFont(const QFont& newFont) {
    if (newFont == font()) {
        return;
    }
    setFont(newFont);
    emit PropertyChanged(QStringLiteral("Font"));
}

void ucShape::SetRounding(int rounding) {
    rounding = std::max(rounding, 0);
    if (rounding == m_rounding) {
        return;
    }
    m_rounding = rounding;
    update();
    emit PropertyChanged(QStringLiteral("Rounding"));
}

QSize ucShape::SnappedSize(QSize size) {
    return size.expandedTo(QSize(kMinSide, kMinSide));
}

QSize ucShape::sizeHint() const {
    return {kHintSide, kHintSide};
}

QSize ucShape::minimumSizeHint() const {
    return {kMinSide, kMinSide};
}

void ucShape::WriteProperties(PropertyBag& bag) const {
    bag.WriteProperty(QStringLiteral("ForeColor"), m_foreColor, kForeColorWriteDefault);
    bag.WriteProperty(QStringLiteral("FillColor"), m_fillColor, kDefaultFillColor);
    bag.WriteProperty(QStringLiteral("BackColor"), m_backColor, kDefaultBackColor);
    bag.WriteProperty(QStringLiteral("Font"), font(), QFont());
    bag.WriteProperty(QStringLiteral("Rounding"), m_rounding, kDefaultRounding);
}

void ucShape::ReadProperties(const PropertyBag& bag) {
    SetForeColor(bag.ReadProperty(QStringLiteral("ForeColor"), kForeColorReadDefault).toUInt());
    SetFillColor(bag.ReadProperty(QStringLiteral("FillColor"), kDefaultFillColor).toUInt());
    SetBackColor(bag.ReadProperty(QStringLiteral("BackColor"), kDefaultBackColor).toUInt());
    SetFont(bag.ReadProperty(QStringLiteral("Font"), QFont()).value<QFont>());
    SetRounding(bag.ReadProperty(QStringLiteral("Rounding"), kDefaultRounding).toInt());
}

void ucShape::paintEvent(QPaintEvent*) {
    const PaintGuard guard(m_painting);
    if (!guard.Entered()) {
        return;
    }
    QPainter painter(this);
    const QPalette& pal = palette();
    painter.fillRect(rect(), TranslateOleColor(m_backColor, pal));
    painter.setPen(TranslateOleColor(m_foreColor, pal));
    painter.setBrush(TranslateOleColor(m_fillColor, pal));
    // The outline runs along the outermost pixels, so the pen's path lies half a pixel inside.
    const QRectF outline = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    if (m_rounding == 0) {
        painter.drawRect(outline);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal radius = m_rounding / 2.0;
    painter.drawRoundedRect(outline, radius, radius);
}

void ucShape::resizeEvent(QResizeEvent* event) {
    // The minimum size keeps a resize from going below the limit; this snaps back a control
    // whose minimum was lowered afterwards.
    const QSize snapped = SnappedSize(event->size());
    if (snapped != event->size()) {
        resize(snapped);
        return;
    }
    QWidget::resizeEvent(event);
}

} // namespace kelvora
