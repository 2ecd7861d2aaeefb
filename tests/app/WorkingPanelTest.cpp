#include "app/WorkingPanel.h"

#include "app/CountAnimation.h"
#include "app/WindowHarness.h"
#include "app/WorkingLight.h"

#include <stdexcept>

namespace kelvora {

using namespace Qt::StringLiterals;
using namespace testing;

class WorkingPanelTest : public QObject {
    Q_OBJECT

private slots:
    // A job leaves only the working panel usable, and every way out of it, an exception too,
    // gives the window back.
    void JobScopeLocksTheWindowAndRestoresItOnEveryWayOut() {
        Harness h;
        const QString idle = u"idle: PictAmpel / Frame_0 FramePwd"_s;
        {
            const JobScope job(h.window);
            QCOMPARE(h.State(), u"working: FrameW / "_s);
            QVERIFY(h.window.cursor().shape() == Qt::WaitCursor);
            QVERIFY(h.Find("cmdCancel")->isEnabled());
        }
        QCOMPARE(h.State(), idle);
        QVERIFY(h.window.cursor().shape() != Qt::WaitCursor);
        try {
            const JobScope job(h.window);
            throw std::runtime_error("job failed");
        } catch (const std::runtime_error&) {
        }
        QCOMPARE(h.State(), idle);
    }

    // Cancel reaches the job, and the flag linked to it only within the job's scope.
    void CancelReachesTheLinkedFlagOnlyWithinTheScope() {
        Harness h;
        WorkingPanel& panel = h.window.Working();
        std::atomic<bool> cipherStop{false};
        {
            JobScope job(h.window);
            job.LinkCancel(cipherStop);
            h.Click("cmdCancel");
            QVERIFY(panel.CancelRequested());
            QVERIFY(cipherStop);
        }
        cipherStop = false;
        const JobScope next(h.window); // a new job starts without the old request
        QVERIFY(!panel.CancelRequested());
        h.Click("cmdCancel");
        QVERIFY(panel.CancelRequested());
        QVERIFY(!cipherStop);
    }

    void AnimationTurnsAndTheLightIsLitWhileWorking() {
        Harness h;
        WorkingPanel& panel = h.window.Working();
        auto* animation = h.Find<CountAnimation>("ImgCount");
        auto* light = h.Find<WorkingLight>("PictArbeitampel");
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

    // The chunk bar follows the progress, the file bar counts the files done, the light changes
    // at each quarter of them, and the current file with the speed are written in the window's
    // language; the next job starts clean.
    void FileJobShowsChunksFilesQuartersAndTheCurrentFile() {
        Harness h(kFrench);
        WorkingPanel& panel = h.window.Working();
        auto* light = h.Find<WorkingLight>("PictArbeitampel");
        auto* file = h.Find<QLabel>("LblJobFile");
        {
            const JobScope job(h.window);
            Harness::Settle();
            panel.OnProgressRange(40);
            panel.OnProgress(30);
            QCOMPARE(panel.ChunkBar().Max(), 40);
            QCOMPARE(panel.ChunkBar().Position(), 30);
            panel.OnJobStarted(8, 4000);
            QCOMPARE(panel.FileBar().Max(), 8);
            QString quarters;
            for (std::size_t index = 0; index < 8; ++index) {
                panel.OnFileStarted(index, "f");
                QCOMPARE(panel.FileBar().Position(), static_cast<qint64>(index));
                quarters += QString::number(light->Quarters());
            }
            QCOMPARE(quarters, u"00112233"_s);
            panel.OnFileStarted(7, "/data/report.txt");
            QCOMPARE(file->toolTip(), Catalogue(kFrench, 517, u"/data/report.txt"_s));
            QVERIFY(file->fontMetrics().horizontalAdvance(file->text()) <= file->width());
            QTest::qWait(20);
            panel.OnBytesDone(1000);
            QVERIFY(h.Find<QLabel>("LblJobSpeed")->text().contains(u"par seconde"_s));
        }
        const JobScope next(h.window);
        QCOMPARE(panel.ChunkBar().Position(), 0);
        QCOMPARE(panel.FileBar().Position(), 0);
        QCOMPARE(light->Quarters(), 0);
        QCOMPARE(file->text(), QString());
    }

    void QuartersAreWholeQuartersOfTheFiles() {
        // done, count, quarters: nothing to do, just under a quarter, a quarter, a half of
        // three, all
        for (const auto& [done, count, quarters] :
             {std::tuple{0U, 0U, 0}, {2U, 9U, 0}, {1U, 4U, 1}, {2U, 3U, 2}, {5U, 5U, 3}}) {
            QCOMPARE(QuartersDone(done, count), quarters);
        }
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::WorkingPanelTest)
#include "WorkingPanelTest.moc"
