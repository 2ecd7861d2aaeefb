#include "app/WorkingPanel.h"

#include "app/CountAnimation.h"
#include "app/WindowContext.h"
#include "app/WindowParts.h"
#include "app/WorkingLight.h"
#include "controls/ProgressBar.h"
#include "i18n/TextIds.h"

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
constexpr qint64 kMillisecondsPerSecond = 1000;

} // namespace

WorkingPanel::WorkingPanel(const WindowContext& context, QWidget* parent)
    : QFrame(parent), m_context(context) {
    parts::MakeCard(this, QStringLiteral("FrameW"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kCardMargin, 14, kCardMargin, 14);
    layout->setSpacing(8);

    auto* heading = new QHBoxLayout;
    heading->setSpacing(10);
    m_workingLight = new WorkingLight(this);
    heading->addWidget(m_workingLight);
    heading->addWidget(parts::Caption(QStringLiteral("LblWorking"), kWorkingCaption, this));
    heading->addStretch();
    m_animation = new CountAnimation(this);
    heading->addWidget(m_animation);
    layout->addLayout(heading);
    layout->addWidget(
        parts::Caption(QStringLiteral("LblWait"), kPleaseWaitHint, this, QStringLiteral("hint")));

    m_chunkBar = parts::Bar(QStringLiteral("ProgressBar1"), 10, this);
    m_fileBar = parts::Bar(QStringLiteral("ProgressBar2"), 5, this);
    layout->addWidget(m_chunkBar);
    layout->addWidget(m_fileBar);
    m_lblJobFile = new QLabel(this);
    m_lblJobFile->setObjectName(QStringLiteral("LblJobFile"));
    m_lblJobFile->setProperty("role", QStringLiteral("hint"));
    m_lblJobFile->setTextFormat(Qt::PlainText);
    m_lblJobFile->setMinimumWidth(1); // a long path is cut, it never widens the window
    m_lblJobSpeed = new QLabel(this);
    m_lblJobSpeed->setObjectName(QStringLiteral("LblJobSpeed"));
    m_lblJobSpeed->setProperty("role", QStringLiteral("hint"));
    layout->addWidget(m_lblJobFile);
    layout->addWidget(m_lblJobSpeed);
    layout->addStretch();

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    m_cmdCancel = parts::Button(QStringLiteral("cmdCancel"), kCancelButtonId, this);
    m_cmdCancel->setCursor(Qt::ArrowCursor);
    buttons->addWidget(m_cmdCancel);
    layout->addLayout(buttons);

    m_animationTimer = new QTimer(this);
    m_animationTimer->setObjectName(QStringLiteral("TmrCount"));
    m_animationTimer->setInterval(kCountInterval);
    connect(m_animationTimer, &QTimer::timeout, this, &WorkingPanel::OnAnimationTick);
    connect(m_cmdCancel, &QPushButton::clicked, this, &WorkingPanel::RequestCancel);
}

void WorkingPanel::Start() {
    m_cancel = false;
    m_fileCount = 0;
    m_totalBytes = 0;
    m_bytesDone = 0;
    m_chunksReported = false;
    m_lblJobFile->clear();
    m_lblJobSpeed->clear();
    m_workingLight->SetQuarters(0);
    m_workingLight->SetLit(true);
    m_chunkBar->SetPosition(0);
    m_fileBar->SetPosition(0);
    m_workClock.start();
    OnAnimationTick();
    m_animationTimer->start();
}

void WorkingPanel::Stop() {
    m_animationTimer->stop();
    m_workingLight->SetLit(false);
    m_linkedCancel = nullptr;
}

void WorkingPanel::RequestCancel() {
    m_cancel = true;
    if (m_linkedCancel != nullptr) {
        *m_linkedCancel = true;
    }
}

void WorkingPanel::OnProgressRange(std::int64_t maximum) {
    m_chunksReported = true;
    m_chunkBar->SetMax(maximum);
}

void WorkingPanel::OnProgress(std::int64_t position) {
    m_chunkBar->SetPosition(position);
}

void WorkingPanel::LetEventsRun() {
    QCoreApplication::processEvents();
}

void WorkingPanel::OnJobStarted(std::size_t fileCount, std::int64_t totalBytes) {
    m_fileCount = fileCount;
    m_totalBytes = totalBytes;
    m_fileBar->SetMax(static_cast<qint64>(fileCount));
}

void WorkingPanel::OnFileStarted(std::size_t index, const std::string& name) {
    m_fileBar->SetPosition(static_cast<qint64>(index));
    m_workingLight->SetQuarters(QuartersDone(index, m_fileCount));
    const QString text = m_context.Text(kCurrentFileText, QString::fromStdString(name));
    m_lblJobFile->setText(
        m_lblJobFile->fontMetrics().elidedText(text, Qt::ElideMiddle, m_lblJobFile->width()));
    m_lblJobFile->setToolTip(text);
}

void WorkingPanel::OnBytesDone(std::int64_t bytes) {
    m_bytesDone += bytes;
    if (!m_chunksReported && m_totalBytes > 0) {
        m_chunkBar->SetMax(m_totalBytes);
        m_chunkBar->SetPosition(std::min(m_bytesDone, m_totalBytes));
    }
    ShowSpeed();
}

void WorkingPanel::ShowSpeed() {
    const qint64 elapsed = m_workClock.elapsed();
    if (elapsed <= 0 || m_bytesDone <= 0) {
        return;
    }
    const qint64 perSecond = m_bytesDone * kMillisecondsPerSecond / elapsed;
    const qint64 left = std::max<qint64>(m_totalBytes - m_bytesDone, 0);
    const qint64 secondsLeft = perSecond > 0 ? left / perSecond : 0;
    m_lblJobSpeed->setText(m_context.Text(
        kSpeedText, m_context.Locale().formattedDataSize(perSecond), QString::number(secondsLeft)));
}

void WorkingPanel::OnAnimationTick() {
    m_animation->Tick(m_workClock.isValid() ? m_workClock.elapsed() / 1000 : 0);
}

} // namespace kelvora
