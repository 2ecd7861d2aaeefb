#include "app/WindowChrome.h"

#include "app/Theme.h"
#include "i18n/Catalogue.h"
#include "i18n/TextIds.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace kelvora {
namespace {

constexpr QSize kFlagSize{24, 16};

void PaintStripes(QPainter& painter, const QRect& area, std::initializer_list<QColor> colours,
                  Qt::Orientation direction) {
    const int count = static_cast<int>(colours.size());
    int index = 0;
    for (const QColor& colour : colours) {
        QRect stripe = area;
        if (direction == Qt::Horizontal) {
            stripe.setTop(area.top() + area.height() * index / count);
            stripe.setBottom(area.top() + area.height() * (index + 1) / count - 1);
        } else {
            stripe.setLeft(area.left() + area.width() * index / count);
            stripe.setRight(area.left() + area.width() * (index + 1) / count - 1);
        }
        painter.fillRect(stripe, colour);
        ++index;
    }
}

void PaintUnionFlag(QPainter& painter, const QRect& area) {
    painter.fillRect(area, QColor(0x01, 0x21, 0x69));
    painter.setRenderHint(QPainter::Antialiasing);
    const QLineF diagonalA(area.topLeft(), area.bottomRight() + QPoint(1, 1));
    const QLineF diagonalB(area.bottomLeft() + QPoint(0, 1), area.topRight() + QPoint(1, 0));
    const QColor red(0xC8, 0x10, 0x2E);
    for (const auto& [colour, width] : {std::pair{QColor(Qt::white), 3.5}, std::pair{red, 1.2}}) {
        painter.setPen(QPen(colour, width));
        painter.drawLine(diagonalA);
        painter.drawLine(diagonalB);
    }
    const QPointF centre = QRectF(area).center();
    painter.fillRect(QRectF(area.left(), centre.y() - 3, area.width(), 6), Qt::white);
    painter.fillRect(QRectF(centre.x() - 3, area.top(), 6, area.height()), Qt::white);
    painter.fillRect(QRectF(area.left(), centre.y() - 1.5, area.width(), 3), red);
    painter.fillRect(QRectF(centre.x() - 1.5, area.top(), 3, area.height()), red);
}

QPixmap FlagPixmap(FlagImage::Country country, qreal scale) {
    QPixmap pixmap(kFlagSize * scale);
    pixmap.setDevicePixelRatio(scale);
    QPainter painter(&pixmap);
    const QRect area(QPoint(0, 0), kFlagSize);
    switch (country) {
    case FlagImage::Country::Germany:
        PaintStripes(painter, area, {Qt::black, QColor(0xDD, 0x00, 0x00), QColor(0xFF, 0xCE, 0x00)},
                     Qt::Horizontal);
        break;
    case FlagImage::Country::UnitedKingdom:
        PaintUnionFlag(painter, area);
        break;
    case FlagImage::Country::Spain: {
        const QColor red(0xC6, 0x0B, 0x1E);
        PaintStripes(painter, area, {red, QColor(0xFF, 0xC4, 0x00), QColor(0xFF, 0xC4, 0x00), red},
                     Qt::Horizontal);
        break;
    }
    case FlagImage::Country::France:
        PaintStripes(painter, area, {QColor(0x00, 0x23, 0x95), Qt::white, QColor(0xED, 0x29, 0x39)},
                     Qt::Vertical);
        break;
    }
    return pixmap;
}

} // namespace

void ClickLabel::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

void ClickLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit Clicked();
    }
}

void ClickLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
        emit Clicked();
        return;
    }
    QLabel::keyPressEvent(event);
}

FlagImage::FlagImage(Country country, const QString& objectName, QWidget* parent)
    : ClickLabel(parent) {
    setObjectName(objectName);
    setPixmap(FlagPixmap(country, devicePixelRatioF()));
    setAlignment(Qt::AlignCenter);
    setLineWidth(1);
    setContentsMargins(2, 2, 2, 2);
    setFocusPolicy(Qt::TabFocus); // reachable by Tab, chosen with Enter or Space
    setFixedSize(kFlagSize + QSize(8, 8));
    setCursor(Qt::PointingHandCursor);
}

std::array<FlagImage*, 4> LanguageFlags(QWidget* parent) {
    constexpr std::array<std::pair<FlagImage::Country, const char*>, 4> kFlags{{
        {FlagImage::Country::Germany, "ImageDE"},
        {FlagImage::Country::UnitedKingdom, "ImageEN"},
        {FlagImage::Country::Spain, "ImageES"},
        {FlagImage::Country::France, "ImageFR"},
    }};
    std::array<FlagImage*, 4> flags{};
    for (std::size_t i = 0; i < kFlags.size(); ++i) {
        flags[i] = new FlagImage(kFlags[i].first, QString::fromLatin1(kFlags[i].second), parent);
        // Each language's name is written in that language, the same whatever the window's.
        const QString name =
            QString::fromStdString(GetText(kGerman, kFirstLanguageNameId + static_cast<int>(i)));
        flags[i]->setToolTip(name);
        flags[i]->setAccessibleName(name);
    }
    return flags;
}

ControlBox::ControlBox(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("IControlBx"));
    setMouseTracking(true);
    setCursor(Qt::PointingHandCursor);
    setFixedSize(sizeHint());
}

QSize ControlBox::sizeHint() const {
    return {kMinimiseWidth + 24, 20};
}

void ControlBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF minimisePart(0, 0, kMinimiseWidth, height());
    const QRectF closePart(kMinimiseWidth, 0, width() - kMinimiseWidth, height());
    if (m_hoverPart >= 0) {
        const QRectF hovered = m_hoverPart == 0 ? minimisePart : closePart;
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_hoverPart == 0 ? theme::kOutline : QColor(0xE8, 0x4C, 0x3D));
        painter.drawRoundedRect(hovered.adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
    }
    const QColor ink = theme::kMutedText;
    painter.setPen(QPen(ink, 1.6, Qt::SolidLine, Qt::RoundCap));
    const QPointF m = minimisePart.center();
    painter.drawLine(QPointF(m.x() - 4, m.y() + 3), QPointF(m.x() + 4, m.y() + 3));
    painter.setPen(
        QPen(m_hoverPart == 1 ? QColor(Qt::white) : ink, 1.6, Qt::SolidLine, Qt::RoundCap));
    const QPointF c = closePart.center();
    painter.drawLine(c + QPointF(-4, -4), c + QPointF(4, 4));
    painter.drawLine(c + QPointF(-4, 4), c + QPointF(4, -4));
}

void ControlBox::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    if (event->position().x() < kMinimiseWidth) {
        emit MinimiseRequested();
    } else {
        emit CloseRequested();
    }
}

void ControlBox::mouseMoveEvent(QMouseEvent* event) {
    const int part = event->position().x() < kMinimiseWidth ? 0 : 1;
    if (part != m_hoverPart) {
        m_hoverPart = part;
        update();
    }
}

void ControlBox::leaveEvent(QEvent*) {
    m_hoverPart = -1;
    update();
}

QPixmap LogoPixmap(int side, qreal devicePixelRatio) {
    QPixmap pixmap(QSize(side, side) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal unit = side / 28.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::kAccent);
    painter.drawRoundedRect(QRectF(0, 0, side, side), 7 * unit, 7 * unit);
    painter.setPen(QPen(Qt::white, 2.4 * unit, Qt::SolidLine, Qt::RoundCap));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(QRectF(9 * unit, 5 * unit, 10 * unit, 12 * unit), 0, 180 * 16);
    painter.drawLine(QPointF(9 * unit, 11 * unit), QPointF(9 * unit, 13 * unit));
    painter.drawLine(QPointF(19 * unit, 11 * unit), QPointF(19 * unit, 13 * unit));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(6.5 * unit, 12.5 * unit, 15 * unit, 11 * unit), 2 * unit,
                            2 * unit);
    painter.setBrush(theme::kAccent);
    painter.drawEllipse(QPointF(14 * unit, 17 * unit), 1.7 * unit, 1.7 * unit);
    painter.drawRect(QRectF(13.3 * unit, 17 * unit, 1.4 * unit, 3.6 * unit));
    return pixmap;
}

void ShowCaption(QWidget* form, bool show) {
    const bool wasVisible = form->isVisible();
    form->setWindowFlag(Qt::FramelessWindowHint, !show);
    if (wasVisible) {
        form->show(); // changing the flags hides a shown window
    }
}

QRegion RoundedRegion(QSize size, int rounding) {
    QPainterPath path;
    path.addRoundedRect(QRectF(QPointF(0, 0), size), rounding / 2.0, rounding / 2.0);
    return QRegion(path.toFillPolygon().toPolygon());
}

} // namespace kelvora
