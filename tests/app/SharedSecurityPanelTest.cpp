#include "app/SharedSecurityPanel.h"

#include "app/RecordingMessageService.h"
#include "app/WindowTestTools.h"
#include "i18n/LocaliseForm.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

namespace kelvora {
namespace {

using namespace Qt::StringLiterals;

// Harness is a window holding a passphrase box and the panel with its mode buttons.
struct Harness {
    testing::RecordingMessageService messages;
    QWidget window;
    QLineEdit* txtCode = new QLineEdit(&window);
    QLineEdit* other = new QLineEdit(&window); // somewhere else to move the focus to
    SharedSecurityPanel* panel;

    Harness() {
        txtCode->setObjectName(u"TxtCode"_s);
        panel = new SharedSecurityPanel(
            *txtCode, messages, [] { return kEnglish; }, &window);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(panel->ModeButtons());
        layout->addWidget(panel);
        layout->addWidget(txtCode);
        layout->addWidget(other);
        LocaliseForm(&window, kEnglish);
        panel->Localise();
        window.show();
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    template <typename Widget = QWidget> Widget* Find(const QString& name) {
        return testing::FindControl<Widget>(&window, name);
    }
    void Click(const QString& name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
    void Type(const QString& text) {
        txtCode->clear();
        QTest::keyClicks(txtCode, text);
    }
    void Scroll(int value) { Find<QScrollBar>(u"KeyScroll"_s)->setValue(value); }
    // EnterKeys selects shared mode and types each key at its place of the scroll bar; an
    // empty key is skipped.
    void EnterKeys(const QStringList& keys) {
        Click(u"optMults_1"_s);
        for (int i = 0; i < keys.size(); ++i) {
            if (!keys[i].isEmpty()) {
                Scroll(i + 1);
                Type(keys[i]);
            }
        }
    }
    void SetCount(const QString& count) {
        auto* field = Find<QLineEdit>(u"txtKeyNum"_s);
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, count);
    }
    // LeaveCount moves the focus from the count field by the keyboard, as a person would.
    void LeaveCount() {
        other->setFocus(Qt::TabFocusReason);
        QApplication::processEvents();
    }
    QString Caption() { return Find<QLabel>(u"lblKeyOf"_s)->text(); }
    QString Places() {
        QString places;
        for (int i = 0; i < kSharedKeySlots; ++i) {
            const auto* place = Find<KeyPlace>(u"SchlusselPlatz_%1"_s.arg(i));
            places += !place->isVisibleTo(panel) ? u'-' : place->IsFilled() ? u'#' : u'.';
        }
        return places;
    }
};

} // namespace

class SharedSecurityPanelTest : public QObject {
    Q_OBJECT

private slots:
    void ShowsItsControlsInSharedModeOnly() {
        Harness h;
        QVERIFY(!h.panel->isVisible());
        h.Click(u"optMults_1"_s);
        QVERIFY(h.panel->isVisible() && h.panel->IsShared());
        QCOMPARE(QApplication::focusWidget(), h.Find(u"txtKeyNum"_s));
        QCOMPARE(h.Caption(), u"1/3"_s);
        QCOMPARE(h.Find<QLabel>(u"lblsharedkey"_s)->text(), u"Keys"_s);
        QCOMPARE(h.Find<QToolButton>(u"lblNextKey_0"_s)->toolTip(), u"Go to next key"_s);
        QCOMPARE(h.Find<QToolButton>(u"lblNextKey_1"_s)->toolTip(), u"Go to previous key"_s);

        h.panel->SetOffered(false); // the text page
        QVERIFY(!h.panel->isVisible() && !h.panel->ModeButtons()->isVisible());
        QVERIFY(h.panel->IsShared());
        h.panel->SetOffered(true);
        QVERIFY(h.panel->isVisible() && h.panel->ModeButtons()->isVisible());
        h.Click(u"optMults_0"_s);
        QVERIFY(!h.panel->isVisible());
        QCOMPARE(QApplication::focusWidget(), h.txtCode);
    }

    void KeysEnteredThroughTheScrollBarCombine() {
        Harness h;
        h.EnterKeys({u"a"_s, u"b"_s, u"c"_s});
        QCOMPARE(h.Caption(), u"3/3"_s);
        QCOMPARE(h.Places(), u"###-------"_s);
        // Which key three keys make is the state's test; the window test opens a CLI text with it.
        QVERIFY(h.panel->BuildKey().has_value());
        h.Scroll(1);
        QCOMPARE(h.txtCode->text(), u"a"_s);

        h.panel->ClearSlots();
        h.txtCode->clear();
        QCOMPARE(h.Places(), u"...-------"_s);
    }

    void ArrowsMoveTheCaptionButNotTheScrollBar() {
        Harness h;
        h.Click(u"optMults_1"_s);
        h.Type(u"a"_s);
        h.Click(u"lblNextKey_0"_s);
        h.Type(u"b"_s);
        h.Click(u"lblNextKey_0"_s);
        QCOMPARE(h.Caption(), u"3/3"_s);
        QCOMPARE(h.Find<QScrollBar>(u"KeyScroll"_s)->value(), 1);
        h.Click(u"lblNextKey_0"_s); // wraps to key 1
        QCOMPARE(h.Caption(), u"1/3"_s);
        QCOMPARE(h.txtCode->text(), u"a"_s);
        h.Click(u"lblNextKey_1"_s); // wraps to key 3
        QCOMPARE(h.Caption(), u"3/3"_s);
        QCOMPARE(h.panel->State().Slot(1), "b");
    }

    void CountIsCheckedWhenTheFieldIsLeft() {
        Harness h;
        h.Click(u"optMults_1"_s);
        h.SetCount(u"12"_s);
        QCOMPARE(h.Caption(), u"1/12"_s);
        h.LeaveCount();
        QCOMPARE(h.messages.ShownIds(), QList<int>{kKeyCountMessageId});
        QTRY_COMPARE(QApplication::focusWidget(), h.Find(u"txtKeyNum"_s));
        // A command clicked meanwhile takes the focus first: one message, not two.
        QVERIFY(!h.panel->BuildKey().has_value());
        QCOMPARE(h.messages.ShownIds(), QList<int>{kKeyCountMessageId});
        QVERIFY(!h.panel->BuildKey().has_value());
        QCOMPARE(h.messages.ShownIds(), (QList<int>{kKeyCountMessageId, kKeyCountMessageId}));
        h.messages.shown.clear();

        h.SetCount(u"x"_s); // not numeric: "2" at once
        QCOMPARE(h.Find<QLineEdit>(u"txtKeyNum"_s)->text(), u"2"_s);
        QCOMPARE(h.Places(), u"..--------"_s);

        h.SetCount(u"1"_s);
        h.LeaveCount();
        QVERIFY(!h.panel->IsShared());
        QVERIFY(h.Find<QRadioButton>(u"optMults_0"_s)->isChecked());
        QCOMPARE(h.Find<QLineEdit>(u"txtKeyNum"_s)->text(), u"2"_s);
        QCOMPARE(h.messages.ShownIds(), QList<int>());
    }

    void ModeSwitchesThrowAwayEveryKey() {
        Harness h;
        h.EnterKeys({u"a"_s, u"b"_s});
        h.Click(u"optMults_0"_s);
        QCOMPARE(h.txtCode->text(), QString());
        h.Click(u"optMults_1"_s);
        for (int i = 0; i < kSharedKeySlots; ++i) {
            QCOMPARE(h.panel->State().Slot(i), std::string());
        }
    }

    void PassgenHidesTheSixthPlaceUntilTheCountChanges() {
        Harness h;
        h.Click(u"optMults_1"_s);
        h.SetCount(u"7"_s);
        h.panel->HideKeyPlace(5);
        QCOMPARE(h.Places(), u".....-.---"_s);
        h.SetCount(u"8"_s);
        QCOMPARE(h.Places(), u"........--"_s);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::SharedSecurityPanelTest)
#include "SharedSecurityPanelTest.moc"
