#pragma once

#include <QWidget>

namespace kelvora {

// CountAnimation is the busy animation (ImgCount): a ring of dots that turns one step a tick
// and the time elapsed since the work began.
class CountAnimation : public QWidget {
    Q_OBJECT

public:
    explicit CountAnimation(QWidget* parent = nullptr);

    // Tick advances the ring and shows elapsedSeconds.
    void Tick(qint64 elapsedSeconds);
    int Step() const { return m_step; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_step = 0;
    qint64 m_elapsedSeconds = 0;
};

} // namespace kelvora
