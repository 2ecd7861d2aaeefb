#include "app/WorkingPanel.h"

#include "app/CountAnimation.h"
#include "app/RecordingMessageService.h"
#include "app/WindowContext.h"
#include "app/WorkingLight.h"
#include "common/FixedRandom.h"
#include "controls/ProgressBar.h"
#include "i18n/Catalogue.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

namespace kelvora {
namespace {

using namespace Qt::StringLiterals;

// Panel is a working panel in a window context of its own.
struct Panel {
    testing::RecordingMessageService messages;
    testing::FixedRandom random;
    WindowContext context{messages, random, kFrench};
    WorkingPanel panel{context};

    QString LabelText(const char* name) {
        return panel.findChild<QLabel*>(QString::fromLatin1(name))->text();
    }
};

} // namespace

class WorkingPanelTest : public QObject {
    Q_OBJECT

private slots:
    void CancelReachesTheJobAndItsLinkedFlagOnlyWhileLinked() {
        Panel fixture;
        WorkingPanel& panel = fixture.panel;
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
        Panel fixture;
        WorkingPanel& panel = fixture.panel;
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
        Panel fixture;
        WorkingPanel& panel = fixture.panel;
        auto* animation = panel.findChild<CountAnimation*>(QStringLiteral("ImgCount"));
        auto* light = panel.findChild<WorkingLight*>(QStringLiteral("PictArbeitampel"));
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

    // The file bar counts the files done, the light changes at each quarter of them, and the
    // current file with the speed are written in the window's language.
    void FileJobShowsFilesQuartersAndTheCurrentFile() {
        Panel fixture;
        WorkingPanel& panel = fixture.panel;
        auto* light = panel.findChild<WorkingLight*>(QStringLiteral("PictArbeitampel"));
        panel.resize(500, 300);
        panel.Start();
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
        auto* file = panel.findChild<QLabel*>(u"LblJobFile"_s);
        QCOMPARE(file->toolTip(),
                 QString::fromStdString(GetText(kFrench, 517, "/data/report.txt")));
        QVERIFY(file->fontMetrics().horizontalAdvance(file->text()) <= file->width());
        QTest::qWait(20);
        panel.OnBytesDone(1000);
        QVERIFY(fixture.LabelText("LblJobSpeed").contains(u"par seconde"_s));
        panel.Stop();
        panel.Start(); // the next job starts clean
        QCOMPARE(light->Quarters(), 0);
        QCOMPARE(fixture.LabelText("LblJobFile"), QString());
        panel.Stop();
    }

    void QuartersAreWholeQuartersOfTheFiles_data() {
        QTest::addColumn<int>("done");
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("quarters");
        QTest::newRow("nothing to do") << 0 << 0 << 0;
        QTest::newRow("just under a quarter") << 2 << 9 << 0;
        QTest::newRow("a quarter") << 1 << 4 << 1;
        QTest::newRow("a half of three") << 2 << 3 << 2;
        QTest::newRow("all") << 5 << 5 << 3;
    }

    void QuartersAreWholeQuartersOfTheFiles() {
        QFETCH(int, done);
        QFETCH(int, count);
        QFETCH(int, quarters);
        QCOMPARE(QuartersDone(static_cast<std::size_t>(done), static_cast<std::size_t>(count)),
                 quarters);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::WorkingPanelTest)
#include "WorkingPanelTest.moc"
