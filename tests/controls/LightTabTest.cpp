#include "controls/LightTab.h"

#include <QSignalSpy>
#include <QTest>

namespace kelvora {

namespace {
// How a tab change is asked for: a click on tab `argument` (-1: right of the last tab), the key
// `argument`, or SetNumberOfTabs(argument).
enum Action { Click, Key, Count };
} // namespace

class LightTabTest : public QObject {
    Q_OBJECT

private slots:
    void SetCaptionPadsAndIgnoresIndexesBeyondTen() {
        LightTab tab;
        tab.SetCaptions(QStringLiteral("Files")); // lacks the closing separator
        tab.SetCaption(2, QStringLiteral("Text"));
        QCOMPARE(tab.Captions(), QStringLiteral("Files||Text|"));
        tab.SetCaption(10, QStringLiteral("Lost"));
        QCOMPARE(tab.Captions(), QStringLiteral("Files||Text|"));
    }

    void HitTestWalksTheBoundaries_data() {
        // A position is given as a boundary of the default strip plus an offset in pixels.
        QTest::addColumn<int>("boundary");
        QTest::addColumn<int>("offset");
        QTest::addColumn<int>("expected");

        QTest::newRow("left of the first tab") << 0 << -1 << -1;
        QTest::newRow("on the first boundary") << 0 << 0 << 0;
        QTest::newRow("a shared edge belongs to the tab before it") << 1 << 0 << 0;
        QTest::newRow("just past the shared edge") << 1 << 1 << 1;
        QTest::newRow("right end of the last tab") << 4 << 0 << 3;
        QTest::newRow("right of the last tab") << 4 << 1 << -1;
        QTest::newRow("where a hidden fifth tab would be") << 4 << 30 << -1;
    }

    void HitTestWalksTheBoundaries() {
        QFETCH(int, boundary);
        QFETCH(int, offset);
        QFETCH(int, expected);

        const LightTab tab;
        const auto boundaries = tab.TabBoundaries();
        QCOMPARE(tab.HitTest(boundaries[static_cast<std::size_t>(boundary)] + offset), expected);
    }

    void ActiveTabStandsTaller() {
        LightTab tab;
        tab.SetActiveTab(1);
        QVERIFY(tab.TabRect(1).top() < tab.TabRect(0).top());
        QCOMPARE(tab.TabRect(1).bottom(), tab.TabRect(0).bottom());
        QCOMPARE(tab.TabRect(0).right(), tab.TabRect(1).left());
        QVERIFY(tab.TabRect(4).isNull());
        QVERIFY(tab.sizeHint().width() > tab.TabRect(3).right());
    }

    void ChangesRaiseOneEventOrNone_data() {
        QTest::addColumn<int>("startTab");
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("argument");
        QTest::addColumn<int>("expectedTab");
        QTest::addColumn<bool>("raised");

        QTest::newRow("click on another tab") << 0 << int(Click) << 2 << 2 << true;
        QTest::newRow("click on the active tab") << 2 << int(Click) << 2 << 2 << false;
        QTest::newRow("click right of the last tab") << 1 << int(Click) << -1 << 1 << false;
        QTest::newRow("Right from the first") << 0 << int(Key) << int(Qt::Key_Right) << 1 << true;
        QTest::newRow("Right on the last") << 3 << int(Key) << int(Qt::Key_Right) << 3 << false;
        QTest::newRow("Left from the third") << 2 << int(Key) << int(Qt::Key_Left) << 1 << true;
        QTest::newRow("Left on the first") << 0 << int(Key) << int(Qt::Key_Left) << 0 << false;
        QTest::newRow("other keys do nothing") << 1 << int(Key) << int(Qt::Key_Down) << 1 << false;
        QTest::newRow("fewer tabs than the active one") << 3 << int(Count) << 2 << 0 << true;
        QTest::newRow("the active tab no longer shown") << 3 << int(Count) << 3 << 0 << true;
        QTest::newRow("the active tab still shown") << 1 << int(Count) << 2 << 1 << false;
    }

    void ChangesRaiseOneEventOrNone() {
        QFETCH(int, startTab);
        QFETCH(int, action);
        QFETCH(int, argument);
        QFETCH(int, expectedTab);
        QFETCH(bool, raised);

        LightTab tab;
        tab.resize(600, tab.sizeHint().height());
        tab.SetActiveTab(startTab);
        const QSignalSpy spy(&tab, &LightTab::AfterTabChange);
        if (action == Click) {
            QTest::mouseClick(&tab, Qt::LeftButton, {},
                              argument >= 0 ? tab.TabRect(argument).center()
                                            : QPoint(tab.TabRect(3).right() + 10, 10));
        } else if (action == Key) {
            QTest::keyClick(&tab, static_cast<Qt::Key>(argument));
        } else {
            tab.SetNumberOfTabs(argument);
        }

        QCOMPARE(tab.ActiveTab(), expectedTab);
        QCOMPARE(spy.count(), raised ? 1 : 0);
        if (raised) {
            QCOMPARE(spy.at(0).at(0).toInt(), expectedTab);
        }
    }

    void NumberOfTabsStaysWithinOneToTen() {
        LightTab tab;
        tab.SetNumberOfTabs(11);
        QCOMPARE(tab.NumberOfTabs(), LightTab::kMaxTabs);
        QCOMPARE(tab.HitTest(tab.TabRect(9).center().x()), 9);
        tab.SetNumberOfTabs(0);
        QCOMPARE(tab.NumberOfTabs(), 1);
        tab.SetActiveTab(1);
        QCOMPARE(tab.ActiveTab(), 0);
    }

    void OnlyChangedPropertiesAreStored() {
        LightTab saved;
        PropertyBag bag;
        saved.WriteProperties(bag);
        QVERIFY(bag.Values().isEmpty());
        saved.SetNumberOfTabs(2);
        saved.WriteProperties(bag);
        QCOMPARE(bag.Values().keys(), QStringList{QStringLiteral("NumberOfTabs")});

        saved.SetCaption(1, QStringLiteral("Decrypt"));
        saved.SetActiveTab(1);
        saved.WriteProperties(bag);
        LightTab loaded;
        loaded.ReadProperties(bag);
        QCOMPARE(loaded.NumberOfTabs(), 2);
        QCOMPARE(loaded.ActiveTab(), 1);
        QCOMPARE(loaded.Captions(), saved.Captions());
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::LightTabTest)
#include "LightTabTest.moc"
