#pragma once

#include "tools/RatingDisplay.h"

namespace kelvora {

// WorkingLight is the working light PictArbeitampel: a lamp lit while a job runs whose image
// changes when a quarter, a half and three quarters of the job's files are done (a green
// sector grows by a quarter each time). Its dynamic property "quarters" holds the step.
class WorkingLight : public Lamp {
    Q_OBJECT

public:
    explicit WorkingLight(QWidget* parent = nullptr);

    int Quarters() const { return m_quarters; }
    // SetQuarters shows how many quarters (0 to 3) of the files are done.
    void SetQuarters(int quarters);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int m_quarters = 0;
};

// QuartersDone is how many whole quarters of count files are done once done files are,
// at most 3 (the light stays lit until the job ends).
[[nodiscard]] int QuartersDone(std::size_t done, std::size_t count);

} // namespace kelvora
