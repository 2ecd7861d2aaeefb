#include "controls/LightTab.h"

#include <QSignalSpy>
#include <QTest>

namespace kelvora {

class LightTabTest : public QObject {
    Q_OBJECT

private slots:
    void NewControlShowsFourTabsWithTheFirstActive();
    void SetCaptionReplacesOnePiece_data();
    void SetCaptionReplacesOnePiece();
    void HitTestWalksTheBoundaries_data();
    void HitTestWalksTheBoundaries();
    void ActiveTabStandsTaller();
    void MouseClickSelectsTab_data();
    void MouseClickSelectsTab();
    void ArrowKeysMoveWithoutWrap_data();
    void ArrowKeysMoveWithoutWrap();
    void NumberOfTabsBelowActiveReturnsToFirst_data();
    void NumberOfTabsBelowActiveReturnsToFirst();
    void NumberOfTabsStaysWithinOneToTen();
    void DefaultsAreNotStored();
    void ChangedPropertiesSurviveSaveAndLoad();
};

void LightTabTest::NewControlShowsFourTabsWithTheFirstActive() {
    const LightTab tab;
    QCOMPARE(tab.NumberOfTabs(), 4);
    QCOMPARE(tab.ActiveTab(), 0);
    for (int i = 0; i < tab.NumberOfTabs(); ++i) {
        QCOMPARE(tab.Caption(i), QStringLiteral("Tab%1").arg(i));
    }
    QCOMPARE(tab.Caption(9), QStringLiteral("Tab9"));
    QCOMPARE(tab.Caption(10), QString());
    QVERIFY(tab.focusPolicy() & Qt::ClickFocus);
}

void LightTabTest::SetCaptionReplacesOnePiece_data() {
    QTest::addColumn<QString>("captions");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("expected");

    QTest::newRow("middle of the defaults") << LightTab::kDefaultCaptions << 1 << "Text"
                                            << "Tab0|Text|Tab2|Tab3|Tab4|Tab5|Tab6|Tab7|Tab8|Tab9|";
    QTest::newRow("beyond a short string pads with empty captions") << "Files|" << 2 << "Text"
                                                                    << "Files||Text|";
    QTest::newRow("string without a closing separator gains one") << "Files" << 0 << "Encrypt"
                                                                  << "Encrypt|";
    QTest::newRow("index beyond ten is ignored") << "A|" << 10 << "K"
                                                 << "A|";
}

void LightTabTest::SetCaptionReplacesOnePiece() {
    QFETCH(QString, captions);
    QFETCH(int, index);
    QFETCH(QString, caption);
    QFETCH(QString, expected);

    LightTab tab;
    tab.SetCaptions(captions);
    tab.SetCaption(index, caption);
    QCOMPARE(tab.Captions(), expected);
}

void LightTabTest::HitTestWalksTheBoundaries_data() {
    // A position is given as a boundary of the default strip plus an offset in pixels.
    QTest::addColumn<int>("boundary");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("expected");

    QTest::newRow("left of the first tab") << 0 << -1 << -1;
    QTest::newRow("on the first boundary") << 0 << 0 << 0;
    QTest::newRow("inside the first tab") << 0 << 5 << 0;
    QTest::newRow("a shared edge belongs to the tab before it") << 1 << 0 << 0;
    QTest::newRow("just past the shared edge") << 1 << 1 << 1;
    QTest::newRow("inside the third tab") << 2 << 3 << 2;
    QTest::newRow("right end of the last tab") << 4 << 0 << 3;
    QTest::newRow("right of the last tab") << 4 << 1 << -1;
    QTest::newRow("where a hidden fifth tab would be") << 4 << 30 << -1;
}

void LightTabTest::HitTestWalksTheBoundaries() {
    QFETCH(int, boundary);
    QFETCH(int, offset);
    QFETCH(int, expected);

    const LightTab tab;
    const auto boundaries = tab.TabBoundaries();
    QCOMPARE(boundaries[0], 2);
    QCOMPARE(tab.HitTest(boundaries[static_cast<std::size_t>(boundary)] + offset), expected);
}

void LightTabTest::ActiveTabStandsTaller() {
    LightTab tab;
    tab.SetActiveTab(1);
    QVERIFY(tab.TabRect(1).top() < tab.TabRect(0).top());
    QCOMPARE(tab.TabRect(1).bottom(), tab.TabRect(0).bottom());
    QCOMPARE(tab.TabRect(0).right(), tab.TabRect(1).left());
    QVERIFY(tab.TabRect(4).isNull());
    QVERIFY(tab.sizeHint().width() > tab.TabRect(3).right());
}

void LightTabTest::MouseClickSelectsTab_data() {
    QTest::addColumn<int>("startTab");
    QTest::addColumn<int>("clickedTab"); // -1: right of the last tab
    QTest::addColumn<int>("expectedTab");
    QTest::addColumn<int>("expectedEvents");

    QTest::newRow("another tab") << 0 << 2 << 2 << 1;
    QTest::newRow("the last tab") << 1 << 3 << 3 << 1;
    QTest::newRow("the active tab") << 2 << 2 << 2 << 0;
    QTest::newRow("right of the last tab") << 1 << -1 << 1 << 0;
}

void LightTabTest::MouseClickSelectsTab() {
    QFETCH(int, startTab);
    QFETCH(int, clickedTab);
    QFETCH(int, expectedTab);
    QFETCH(int, expectedEvents);

    LightTab tab;
    tab.resize(600, tab.sizeHint().height());
    tab.SetActiveTab(startTab);
    const QSignalSpy spy(&tab, &LightTab::AfterTabChange);
    const QPoint where = clickedTab >= 0 ? tab.TabRect(clickedTab).center()
                                         : QPoint(tab.TabRect(3).right() + 10, 10);
    QTest::mouseClick(&tab, Qt::LeftButton, {}, where);

    QCOMPARE(tab.ActiveTab(), expectedTab);
    QCOMPARE(spy.count(), expectedEvents);
    if (expectedEvents > 0) {
        QCOMPARE(spy.at(0).at(0).toInt(), expectedTab);
    }
}

void LightTabTest::ArrowKeysMoveWithoutWrap_data() {
    QTest::addColumn<int>("startTab");
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("expectedTab");
    QTest::addColumn<int>("expectedEvents");

    QTest::newRow("right from the first") << 0 << static_cast<int>(Qt::Key_Right) << 1 << 1;
    QTest::newRow("right on the last") << 3 << static_cast<int>(Qt::Key_Right) << 3 << 0;
    QTest::newRow("left from the third") << 2 << static_cast<int>(Qt::Key_Left) << 1 << 1;
    QTest::newRow("left on the first") << 0 << static_cast<int>(Qt::Key_Left) << 0 << 0;
    QTest::newRow("other keys do nothing") << 1 << static_cast<int>(Qt::Key_Down) << 1 << 0;
}

void LightTabTest::ArrowKeysMoveWithoutWrap() {
    QFETCH(int, startTab);
    QFETCH(int, key);
    QFETCH(int, expectedTab);
    QFETCH(int, expectedEvents);

    LightTab tab;
    tab.SetActiveTab(startTab);
    const QSignalSpy spy(&tab, &LightTab::AfterTabChange);
    QTest::keyClick(&tab, static_cast<Qt::Key>(key));

    QCOMPARE(tab.ActiveTab(), expectedTab);
    QCOMPARE(spy.count(), expectedEvents);
    if (expectedEvents > 0) {
        QCOMPARE(spy.at(0).at(0).toInt(), expectedTab);
    }
}

void LightTabTest::NumberOfTabsBelowActiveReturnsToFirst_data() {
    QTest::addColumn<int>("activeTab");
    QTest::addColumn<int>("numberOfTabs");
    QTest::addColumn<int>("expectedTab");
    QTest::addColumn<int>("expectedEvents");

    QTest::newRow("below the active tab") << 3 << 2 << 0 << 1;
    QTest::newRow("the active tab no longer shown") << 3 << 3 << 0 << 1;
    QTest::newRow("active tab still shown") << 1 << 2 << 1 << 0;
    QTest::newRow("more tabs") << 2 << 6 << 2 << 0;
}

void LightTabTest::NumberOfTabsBelowActiveReturnsToFirst() {
    QFETCH(int, activeTab);
    QFETCH(int, numberOfTabs);
    QFETCH(int, expectedTab);
    QFETCH(int, expectedEvents);

    LightTab tab;
    tab.SetActiveTab(activeTab);
    const QSignalSpy spy(&tab, &LightTab::AfterTabChange);
    tab.SetNumberOfTabs(numberOfTabs);

    QCOMPARE(tab.NumberOfTabs(), numberOfTabs);
    QCOMPARE(tab.ActiveTab(), expectedTab);
    QCOMPARE(spy.count(), expectedEvents);
}

void LightTabTest::NumberOfTabsStaysWithinOneToTen() {
    LightTab tab;
    tab.SetNumberOfTabs(11);
    QCOMPARE(tab.NumberOfTabs(), LightTab::kMaxTabs);
    QCOMPARE(tab.HitTest(tab.TabRect(9).center().x()), 9);
    tab.SetNumberOfTabs(0);
    QCOMPARE(tab.NumberOfTabs(), 1);
    tab.SetActiveTab(1);
    QCOMPARE(tab.ActiveTab(), 0);
}

void LightTabTest::DefaultsAreNotStored() {
    LightTab tab;
    PropertyBag bag;
    tab.WriteProperties(bag);
    QVERIFY(bag.Values().isEmpty());

    tab.SetNumberOfTabs(2);
    tab.WriteProperties(bag);
    QCOMPARE(bag.Values().keys(), QStringList{QStringLiteral("NumberOfTabs")});
    QCOMPARE(bag.ReadProperty(QStringLiteral("NumberOfTabs"), 4).toInt(), 2);
}

void LightTabTest::ChangedPropertiesSurviveSaveAndLoad() {
    LightTab saved;
    saved.SetNumberOfTabs(2);
    saved.SetCaption(0, QStringLiteral("Encrypt"));
    saved.SetCaption(1, QStringLiteral("Decrypt"));
    saved.SetActiveTab(1);
    PropertyBag bag;
    saved.WriteProperties(bag);

    LightTab loaded;
    loaded.ReadProperties(bag);
    QCOMPARE(loaded.NumberOfTabs(), 2);
    QCOMPARE(loaded.ActiveTab(), 1);
    QCOMPARE(loaded.Captions(), saved.Captions());
}

} // namespace kelvora

QTEST_MAIN(kelvora::LightTabTest)
#include "LightTabTest.moc"
