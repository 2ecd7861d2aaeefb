#include "tools/RatingDisplay.h"

#include "i18n/TextIds.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace kelvora {
namespace {

const std::array<QColor, 3> kLampColours = {QColor(255, 0, 0), QColor(255, 255, 0),
                                            QColor(0, 255, 0)};
const QColor kDarkLamp(0xE4, 0xE8, 0xEE);
const QColor kLampRim(0x9A, 0xA4, 0xB1);
const QColor kLitStar(0xF2, 0xB0, 0x1E);
const QColor kUnlitStar(0xC3, 0xCA, 0xD4);

QLabel* StarLabel(const QString& glyph, const QColor& colour, QWidget* parent) {
    auto* star = new QLabel(glyph, parent);
    star->setStyleSheet(QStringLiteral("color: %1; font-size: 15pt;").arg(colour.name()));
    star->setAlignment(Qt::AlignCenter);
    return star;
}

} // namespace

Lamp::Lamp(const QColor& colour, const QString& objectName, QWidget* parent)
    : QWidget(parent), m_colour(colour) {
    setObjectName(objectName);
    setProperty("lit", false);
    setFixedSize(kSize, kSize);
}

bool Lamp::IsLit() const {
    return property("lit").toBool();
}

void Lamp::SetLit(bool lit) {
    if (lit != IsLit()) {
        setProperty("lit", lit);
        update();
    }
}

void Lamp::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kLampRim, 1));
    painter.setBrush(IsLit() ? m_colour : kDarkLamp);
    painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

RatingDisplay::RatingDisplay(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);

    auto* indicators = new QHBoxLayout;
    indicators->setSpacing(2);
    auto* caption = new QLabel(this);
    caption->setObjectName(QStringLiteral("LblQuality"));
    caption->setProperty("Tag", QStringLiteral("#%1").arg(kPassphraseQualityCaption));
    caption->setProperty("role", QStringLiteral("caption"));
    indicators->addWidget(caption);
    indicators->addSpacing(10);
    for (std::size_t i = 0; i < m_stars.size(); ++i) {
        auto* slot = new QGridLayout;
        slot->addWidget(StarLabel(QStringLiteral("\u2606"), kUnlitStar, this), 0, 0);
        m_stars[i] = StarLabel(QStringLiteral("\u2605"), kLitStar, this);
        m_stars[i]->setObjectName(QStringLiteral("Stern_%1").arg(i + 1));
        slot->addWidget(m_stars[i], 0, 0);
        indicators->addLayout(slot);
    }
    indicators->addSpacing(14);

    m_trafficLight = new QWidget(this);
    m_trafficLight->setObjectName(QStringLiteral("PictAmpel"));
    auto* lamps = new QHBoxLayout(m_trafficLight);
    lamps->setContentsMargins(6, 3, 6, 3);
    lamps->setSpacing(5);
    for (std::size_t i = 0; i < m_lamps.size(); ++i) {
        m_lamps[i] = new Lamp(kLampColours[i], QStringLiteral("AmpelL_%1").arg(i), m_trafficLight);
        lamps->addWidget(m_lamps[i]);
    }
    m_trafficLight->setStyleSheet(
        QStringLiteral("#PictAmpel { background: #4A5563; border-radius: 10px; }"));
    indicators->addWidget(m_trafficLight, 0, Qt::AlignVCenter);
    indicators->addStretch();
    layout->addLayout(indicators);

    // The sentence keeps room for two lines, so the area does not jump as the rating changes.
    m_sentence = new QLabel(this);
    m_sentence->setObjectName(QStringLiteral("Label3"));
    m_sentence->setWordWrap(true);
    m_sentence->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_sentence->setProperty("role", QStringLiteral("hint"));
    layout->addWidget(m_sentence);
}

void RatingDisplay::ShowRating(const PassphraseRating& rating, const QString& sentence) {
    for (std::size_t i = 0; i < m_stars.size(); ++i) {
        m_stars[i]->setVisible(static_cast<int>(i) < rating.stars);
    }
    for (std::size_t i = 0; i < m_lamps.size(); ++i) {
        m_lamps[i]->SetLit(rating.lamps[i]);
    }
    m_sentence->setText(sentence);
    m_sentence->ensurePolished(); // the style sheet sets the font the room is measured in
    m_sentence->setMinimumHeight(2 * m_sentence->fontMetrics().height() + 2);
}

} // namespace kelvora
