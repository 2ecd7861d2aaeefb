#include "app/WorkingPanel.h"

#include "app/CountAnimation.h"
#include "app/WindowParts.h"
#include "controls/ProgressBar.h"
#include "tools/RatingDisplay.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace kelvora {
namespace {

constexpr int kCountInterval = 125; // milliseconds between two steps of the busy animation
constexpr int kCardMargin = 16;

} // namespace

WorkingPanel::WorkingPanel(QWidget* parent) : QFrame(parent) {
    parts::MakeCard(this, QStringLiteral("FrameW"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kCardMargin, 14, kCardMargin, 14);
    layout->setSpacing(8);

    auto* heading = new QHBoxLayout;
    heading->setSpacing(10);
    m_pictArbeitampel = new Lamp(QColor(0xF5, 0xA6, 0x23), QStringLiteral("PictArbeitampel"), this);
    heading->addWidget(m_pictArbeitampel);
    heading->addWidget(parts::Caption(QStringLiteral("LblWorking"), 142, this));
    heading->addStretch();
    m_imgCount = new CountAnimation(this);
    heading->addWidget(m_imgCount);
    layout->addLayout(heading);
    layout->addWidget(parts::Caption(QStringLiteral("LblWait"), 143, this, QStringLiteral("hint")));

    m_progressBar1 = parts::Bar(QStringLiteral("ProgressBar1"), 10, this);
    m_progressBar2 = parts::Bar(QStringLiteral("ProgressBar2"), 5, this);
    layout->addWidget(m_progressBar1);
    layout->addWidget(m_progressBar2);
    layout->addStretch();

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_cmdCancel = parts::Button(QStringLiteral("cmdCancel"), 150, this);
    m_cmdCancel->setCursor(Qt::ArrowCursor);
    buttons->addWidget(m_cmdCancel);
    layout->addLayout(buttons);

    m_tmrCount = new QTimer(this);
    m_tmrCount->setObjectName(QStringLiteral("TmrCount"));
    m_tmrCount->setInterval(kCountInterval);
    connect(m_tmrCount, &QTimer::timeout, this, &WorkingPanel::OnTmrCountTick);
    connect(m_cmdCancel, &QPushButton::clicked, this, &WorkingPanel::RequestCancel);
}

void WorkingPanel::Start() {
    m_cancel = false;
    m_pictArbeitampel->SetLit(true);
    m_progressBar1->SetPosition(0);
    m_progressBar2->SetPosition(0);
    m_workClock.start();
    OnTmrCountTick();
    m_tmrCount->start();
}

void WorkingPanel::Stop() {
    m_tmrCount->stop();
    m_pictArbeitampel->SetLit(false);
    m_linkedCancel = nullptr;
}

void WorkingPanel::RequestCancel() {
    m_cancel = true;
    if (m_linkedCancel != nullptr) {
        *m_linkedCancel = true;
    }
}

void WorkingPanel::OnProgressRange(std::int64_t maximum) {
    m_progressBar1->SetMax(maximum);
}

void WorkingPanel::OnProgress(std::int64_t position) {
    m_progressBar1->SetPosition(position);
}

void WorkingPanel::LetEventsRun() {
    QCoreApplication::processEvents();
}

void WorkingPanel::OnTmrCountTick() {
    m_imgCount->Tick(m_workClock.isValid() ? m_workClock.elapsed() / 1000 : 0);
}

} // namespace kelvora
