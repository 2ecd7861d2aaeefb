#pragma once

#include "tools/PassphraseRating.h"

#include <QColor>
#include <QWidget>
#include <array>

class QLabel;

namespace kelvora {

// Lamp is a round lamp: filled with its colour while its dynamic property "lit" is true,
// dark otherwise.
class Lamp : public QWidget {
    Q_OBJECT

public:
    static constexpr int kSize = 14;

    Lamp(const QColor& colour, const QString& objectName, QWidget* parent = nullptr);
    bool IsLit() const;
    void SetLit(bool lit);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor m_colour;
};

// RatingDisplay shows a passphrase rating under its caption LblQuality three ways: the stars
// Stern_1 to Stern_5 (a star not earned is hidden and leaves its grey outline), the traffic light
// PictAmpel with the lamps AmpelL_0 (red), AmpelL_1 (yellow) and AmpelL_2 (green), whose dynamic
// property "lit" tells whether they are filled, and the sentence in Label3.
class RatingDisplay : public QWidget {
    Q_OBJECT

public:
    explicit RatingDisplay(QWidget* parent = nullptr);

    // ShowRating shows the stars and lamps of rating and sentence as the text of Label3.
    void ShowRating(const PassphraseRating& rating, const QString& sentence);

    QWidget* TrafficLight() const { return m_trafficLight; }

private:
    std::array<QLabel*, 5> m_stars{};
    std::array<Lamp*, 3> m_lamps{};
    QWidget* m_trafficLight = nullptr;
    QLabel* m_sentence = nullptr;
};

} // namespace kelvora
