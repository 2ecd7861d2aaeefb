#include "app/WorkingPanel.h"

#include "app/CountAnimation.h"
#include "controls/ProgressBar.h"
#include "tools/RatingDisplay.h"

#include <QPushButton>
#include <QTest>

namespace kelvora {

class WorkingPanelTest : public QObject {
    Q_OBJECT

private slots:
    void CancelReachesTheJobAndItsLinkedFlagOnlyWhileLinked() {
        WorkingPanel panel;
        auto* cancel = panel.findChild<QPushButton*>(QStringLiteral("cmdCancel"));
        std::atomic<bool> cipherStop{false};
        panel.Start();
        panel.LinkCancel(&cipherStop);
        QVERIFY(!panel.CancelRequested());
        QTest::mouseClick(cancel, Qt::LeftButton);
        QVERIFY(panel.CancelRequested());
        QVERIFY(cipherStop);

        panel.Stop();
        cipherStop = false;
        panel.Start(); // a new job starts without the old request
        QVERIFY(!panel.CancelRequested());
        QTest::mouseClick(cancel, Qt::LeftButton);
        QVERIFY(panel.CancelRequested());
        QVERIFY(!cipherStop);
    }

    void ProgressMovesTheChunkBarAndStartResetsBoth() {
        WorkingPanel panel;
        panel.OnProgressRange(40);
        panel.OnProgress(30);
        panel.FileBar().SetMax(4);
        panel.FileBar().SetPosition(3);
        QCOMPARE(panel.ChunkBar().Max(), 40);
        QCOMPARE(panel.ChunkBar().Position(), 30);
        panel.Start();
        QCOMPARE(panel.ChunkBar().Position(), 0);
        QCOMPARE(panel.FileBar().Position(), 0);
        panel.Stop();
    }

    void AnimationTurnsAndTheLightIsLitWhileWorking() {
        WorkingPanel panel;
        auto* animation = panel.findChild<CountAnimation*>(QStringLiteral("ImgCount"));
        auto* light = panel.findChild<Lamp*>(QStringLiteral("PictArbeitampel"));
        QVERIFY(!light->IsLit());
        panel.Start();
        QVERIFY(light->IsLit());
        const int first = animation->Step();
        QTRY_VERIFY(animation->Step() != first);
        panel.Stop();
        QVERIFY(!light->IsLit());
        const int stopped = animation->Step();
        QTest::qWait(300);
        QCOMPARE(animation->Step(), stopped);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::WorkingPanelTest)
#include "WorkingPanelTest.moc"
