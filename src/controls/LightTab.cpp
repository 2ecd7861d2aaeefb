#include "controls/LightTab.h"

#include "controls/OleColor.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace kelvora {

namespace {

constexpr int kFirstBoundary = 2; // left x of the first tab
constexpr int kActiveRaise = 3;   // how far the active tab stands above the others
constexpr int kTextPadding = 12;  // space left and right of a caption
constexpr int kMinTabHeight = 19; // tab height with a small font
constexpr int kTextVerticalRoom = 8;
constexpr int kCornerCut = 2; // the upper corners of a tab are cut at 45 degrees
constexpr int kFocusInset = 3;

// The lines of the tabs take their colours from this table, in this order.
enum ColourIndex { kWhite, kLightGrey, kBlack, kWorkspace };
constexpr std::array<OleColor, 4> kColourTable = {0xFFFFFFu, 0xE0E0E0u, 0x000000u,
                                                  kColourAppWorkspace};

constexpr QChar kCaptionSeparator = u'|';

QFont CaptionFont(QFont font, bool active) {
    font.setBold(active);
    return font;
}

} // namespace

LightTab::LightTab(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QString LightTab::Caption(int index) const {
    return m_captions.split(kCaptionSeparator).value(index);
}

void LightTab::SetCaption(int index, const QString& caption) {
    if (index < 0 || index >= kMaxTabs || Caption(index) == caption) {
        return;
    }
    QStringList pieces = m_captions.split(kCaptionSeparator);
    if (m_captions.endsWith(kCaptionSeparator)) {
        pieces.removeLast();
    }
    while (pieces.size() <= index) {
        pieces.append(QString());
    }
    pieces[index] = caption;
    SetCaptions(pieces.join(kCaptionSeparator) + kCaptionSeparator);
}

void LightTab::SetCaptions(const QString& captions) {
    if (captions == m_captions) {
        return;
    }
    m_captions = captions;
    updateGeometry();
    update();
    emit PropertyChanged(QStringLiteral("Caption"));
}

void LightTab::SetNumberOfTabs(int count) {
    count = std::clamp(count, 1, kMaxTabs);
    if (count == m_numberOfTabs) {
        return;
    }
    m_numberOfTabs = count;
    updateGeometry();
    update();
    emit PropertyChanged(QStringLiteral("NumberOfTabs"));
    if (m_activeTab >= count) {
        SetActiveTab(0);
    }
}

void LightTab::SetActiveTab(int index) {
    if (index < 0 || index >= m_numberOfTabs || index == m_activeTab) {
        return;
    }
    m_activeTab = index;
    update();
    emit PropertyChanged(QStringLiteral("ActiveTab"));
    emit AfterTabChange(index);
}

int LightTab::TabHeight() const {
    return std::max(kMinTabHeight,
                    QFontMetrics(CaptionFont(font(), true)).height() + kTextVerticalRoom);
}

int LightTab::TabWidth(int index) const {
    // Measured in the active tab's bold font, so a tab keeps its width when it is selected.
    const QFontMetrics metrics(CaptionFont(font(), true));
    return metrics.horizontalAdvance(Caption(index)) + 2 * kTextPadding;
}

std::array<int, LightTab::kMaxTabs + 1> LightTab::TabBoundaries() const {
    std::array<int, kMaxTabs + 1> boundaries{};
    boundaries[0] = kFirstBoundary;
    for (int i = 0; i < kMaxTabs; ++i) {
        const int width = i < m_numberOfTabs ? TabWidth(i) : 0;
        boundaries[static_cast<std::size_t>(i) + 1] =
            boundaries[static_cast<std::size_t>(i)] + width;
    }
    return boundaries;
}

QRect LightTab::TabRect(int index) const {
    if (index < 0 || index >= m_numberOfTabs) {
        return {};
    }
    const auto boundaries = TabBoundaries();
    const int left = boundaries[static_cast<std::size_t>(index)];
    const int right = boundaries[static_cast<std::size_t>(index) + 1];
    const int top = index == m_activeTab ? 0 : kActiveRaise;
    const int baseline = kActiveRaise + TabHeight();
    return QRect(QPoint(left, top), QPoint(right, baseline));
}

int LightTab::HitTest(int x) const {
    const auto boundaries = TabBoundaries();
    if (x < boundaries[0]) {
        return -1;
    }
    // The first boundary at or beyond x closes the tab that holds x; past the last, none.
    for (std::size_t i = 1; i <= static_cast<std::size_t>(m_numberOfTabs); ++i) {
        if (boundaries[i] >= x) {
            return static_cast<int>(i) - 1;
        }
    }
    return -1;
}

QSize LightTab::sizeHint() const {
    const auto boundaries = TabBoundaries();
    return {boundaries[static_cast<std::size_t>(m_numberOfTabs)] + kFirstBoundary,
            kActiveRaise + TabHeight() + 1};
}

QSize LightTab::minimumSizeHint() const {
    return sizeHint();
}

void LightTab::WriteProperties(PropertyBag& bag) const {
    bag.WriteProperty(QStringLiteral("Caption"), m_captions, kDefaultCaptions);
    bag.WriteProperty(QStringLiteral("NumberOfTabs"), m_numberOfTabs, kDefaultNumberOfTabs);
    bag.WriteProperty(QStringLiteral("ActiveTab"), m_activeTab, 0);
}

void LightTab::ReadProperties(const PropertyBag& bag) {
    SetCaptions(bag.ReadProperty(QStringLiteral("Caption"), kDefaultCaptions).toString());
    SetNumberOfTabs(bag.ReadProperty(QStringLiteral("NumberOfTabs"), kDefaultNumberOfTabs).toInt());
    SetActiveTab(bag.ReadProperty(QStringLiteral("ActiveTab"), 0).toInt());
}

void LightTab::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QPalette& pal = palette();
    const auto colour = [&pal](ColourIndex index) {
        return TranslateOleColor(kColourTable[index], pal);
    };

    const auto drawTab = [&](int index) {
        const bool active = index == m_activeTab;
        const QRect r = TabRect(index);
        const bool lit = active || index == m_highlightedTab;
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour(lit ? kWhite : kLightGrey));
        painter.drawPolygon(QPolygon(
            {QPoint(r.left(), r.bottom()), QPoint(r.left(), r.top() + kCornerCut),
             QPoint(r.left() + kCornerCut, r.top()), QPoint(r.right() - kCornerCut, r.top()),
             QPoint(r.right(), r.top() + kCornerCut), QPoint(r.right(), r.bottom())}));
        painter.setPen(colour(active ? kBlack : kWorkspace));
        painter.drawLine(r.left(), r.bottom(), r.left(), r.top() + kCornerCut);
        painter.drawLine(r.left(), r.top() + kCornerCut, r.left() + kCornerCut, r.top());
        painter.drawLine(r.left() + kCornerCut, r.top(), r.right() - kCornerCut, r.top());
        painter.drawLine(r.right() - kCornerCut, r.top(), r.right(), r.top() + kCornerCut);
        painter.drawLine(r.right(), r.top() + kCornerCut, r.right(), r.bottom());

        painter.setFont(CaptionFont(font(), active));
        painter.setPen(
            pal.color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
        painter.drawText(r.adjusted(1, 1, 0, 0), Qt::AlignCenter, Caption(index));
    };

    for (int i = 0; i < m_numberOfTabs; ++i) {
        if (i != m_activeTab) {
            drawTab(i);
        }
    }
    drawTab(m_activeTab);

    // The strip's base line stays open under the active tab, which joins its page.
    const QRect active = TabRect(m_activeTab);
    painter.setPen(colour(kBlack));
    painter.drawLine(0, active.bottom(), active.left(), active.bottom());
    painter.drawLine(active.right(), active.bottom(), width() - 1, active.bottom());

    if (hasFocus()) {
        painter.setPen(QPen(colour(kBlack), 1, Qt::DotLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(active.adjusted(kFocusInset, kFocusInset, -kFocusInset, -kFocusInset));
    }
}

void LightTab::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    const int tab = HitTest(event->position().toPoint().x());
    if (tab >= 0) {
        SetActiveTab(tab);
    }
}

void LightTab::mouseMoveEvent(QMouseEvent* event) {
    SetHighlightedTab(HitTest(event->position().toPoint().x()));
    QWidget::mouseMoveEvent(event);
}

void LightTab::leaveEvent(QEvent* event) {
    SetHighlightedTab(-1);
    QWidget::leaveEvent(event);
}

void LightTab::SetHighlightedTab(int index) {
    if (index == m_highlightedTab) {
        return;
    }
    m_highlightedTab = index;
    update();
}

void LightTab::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Right:
        SetActiveTab(std::min(m_activeTab + 1, m_numberOfTabs - 1));
        break;
    case Qt::Key_Left:
        SetActiveTab(std::max(m_activeTab - 1, 0));
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void LightTab::focusInEvent(QFocusEvent* event) {
    update();
    QWidget::focusInEvent(event);
}

void LightTab::focusOutEvent(QFocusEvent* event) {
    update();
    QWidget::focusOutEvent(event);
}

} // namespace kelvora
