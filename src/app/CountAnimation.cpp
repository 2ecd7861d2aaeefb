#include "app/CountAnimation.h"

#include "app/Theme.h"

#include <QPainter>
#include <QtMath>

namespace kelvora {
namespace {

constexpr int kDots = 8;
constexpr int kRingSize = 26;

} // namespace

CountAnimation::CountAnimation(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("ImgCount"));
}

void CountAnimation::Tick(qint64 elapsedSeconds) {
    m_step = (m_step + 1) % kDots;
    m_elapsedSeconds = elapsedSeconds;
    update();
}

QSize CountAnimation::sizeHint() const {
    return {kRingSize + 8 + fontMetrics().horizontalAdvance(QStringLiteral("00:00")), kRingSize};
}

void CountAnimation::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(kRingSize / 2.0, height() / 2.0);
    const qreal radius = kRingSize / 2.0 - 3;
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < kDots; ++i) {
        const int age = (m_step - i + kDots) % kDots; // 0 is the newest dot
        QColor colour = theme::kAccent;
        colour.setAlphaF(1.0 - age * 0.11);
        const qreal angle = 2 * M_PI * i / kDots - M_PI / 2;
        painter.setBrush(colour);
        painter.drawEllipse(centre + QPointF(radius * qCos(angle), radius * qSin(angle)), 2.4, 2.4);
    }
    painter.setPen(theme::kMutedText);
    const QString elapsed = QStringLiteral("%1:%2")
                                .arg(m_elapsedSeconds / 60, 2, 10, QLatin1Char('0'))
                                .arg(m_elapsedSeconds % 60, 2, 10, QLatin1Char('0'));
    painter.drawText(QRect(kRingSize + 8, 0, width() - kRingSize - 8, height()),
                     Qt::AlignVCenter | Qt::AlignLeft, elapsed);
}

} // namespace kelvora
