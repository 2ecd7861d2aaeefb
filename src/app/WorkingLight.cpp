#include "app/WorkingLight.h"

#include <QPainter>
#include <algorithm>

namespace kelvora {
namespace {

const QColor kAmber(0xF5, 0xA6, 0x23);
const QColor kDoneGreen(0x2E, 0xA0, 0x5A);
constexpr int kQuarterAngle = 90 * 16; // Qt angles count sixteenths of a degree
constexpr int kTopAngle = 90 * 16;

} // namespace

WorkingLight::WorkingLight(QWidget* parent)
    : Lamp(kAmber, QStringLiteral("PictArbeitampel"), parent) {
    setProperty("quarters", 0);
}

void WorkingLight::SetQuarters(int quarters) {
    quarters = std::clamp(quarters, 0, 3);
    if (quarters == m_quarters) {
        return;
    }
    m_quarters = quarters;
    setProperty("quarters", quarters);
    update();
}

void WorkingLight::paintEvent(QPaintEvent* event) {
    Lamp::paintEvent(event);
    if (!IsLit() || m_quarters == 0) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(kDoneGreen);
    painter.drawPie(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), kTopAngle,
                    -m_quarters * kQuarterAngle);
}

int QuartersDone(std::size_t done, std::size_t count) {
    if (count == 0) {
        return 0;
    }
    return static_cast<int>(std::min<std::size_t>(done * 4 / count, 3));
}

} // namespace kelvora
