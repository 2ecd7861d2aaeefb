#include "tools/FrmTast.h"

#include "app/WindowTestTools.h"
#include "i18n/TextIds.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <tuple>

namespace kelvora {

using namespace Qt::StringLiterals;

namespace {

using testing::Catalogue;

constexpr std::uint32_t kGermanLayout = 0x04070407;
constexpr std::uint32_t kEnglishLayout = 0x04090409;
constexpr std::uint32_t kSpanishLayout = 0x040A040A;

// Harness holds a passphrase box and a keyboard that types into it.
struct Harness {
    QLineEdit txtCode;
    FrmTast keyboard;

    explicit Harness(std::uint32_t layout, int languageOffset = kEnglish)
        : keyboard(txtCode, languageOffset, layout) {
        keyboard.setAttribute(Qt::WA_DeleteOnClose, false);
        keyboard.show();
    }

    template <typename Widget = QPushButton> Widget* Find(const QString& name) {
        return testing::FindControl<Widget>(&keyboard, name);
    }
    QPushButton* Key(int index) { return Find(u"cmdNr_%1"_s.arg(index)); }
    void Press(int index) { QTest::mouseClick(Key(index), Qt::LeftButton); }
};

} // namespace

class FrmTastTest : public QObject {
    Q_OBJECT

private slots:
    // What each key shows and types is the captions' and the key handler's table; these rows
    // (layout, shift pressed, key, caption, typed) prove that the window passes on its layout,
    // its shift state and the pressed key, and doubles a single ampersand to show as one.
    void TypesByLayoutAndShift() {
        const std::tuple<std::uint32_t, bool, int, QString, QString> kPresses[] = {
            {kEnglishLayout, false, 44, u"Y"_s, u"y"_s},
            {kSpanishLayout, true, 52, u"ç"_s, u"Ç"_s},
            {kEnglishLayout, false, 60, u"&&"_s, u"&"_s},
            {kGermanLayout, false, 59, u"&&"_s, u"&&"_s}};
        for (const auto& [layout, shifted, index, caption, typed] : kPresses) {
            Harness h(layout);
            if (shifted) {
                h.Press(kShiftKey);
            }
            QCOMPARE(h.Key(index)->text(), caption);
            h.txtCode.setText(u"pw"_s);
            h.Press(index);
            QCOMPARE(h.txtCode.text(), u"pw"_s + typed);
        }
    }

    // Enter, Tab and "\" are greyed and type nothing; backspace removes the last character and
    // leaves an empty box alone.
    void KeysThatTypeNoCharacter() {
        Harness h(kEnglishLayout);
        h.txtCode.setText(u"aäb"_s);
        for (const int index : {11, 13, 66, kBackspaceKey}) {
            QCOMPARE(h.Key(index)->isEnabled(), index == kBackspaceKey);
            h.Press(index);
        }
        QCOMPARE(h.txtCode.text(), u"aä"_s);
        for (int press = 0; press < 3; ++press) {
            h.Press(kBackspaceKey);
        }
        QCOMPARE(h.txtCode.text(), QString());
        QCOMPARE(h.keyboard.findChildren<QPushButton*>().size(), 66);
    }

    // Shift stays until pressed again, and the letters' names follow it; the two tool tips are
    // fixed German texts; the names follow a change of language.
    void ShiftStaysUntilPressedAgain() {
        Harness h(kGermanLayout, kFrench);
        QCOMPARE(h.Key(kShiftKey)->toolTip(), u"Groß-/Kleinschreibung"_s);
        QCOMPARE(h.Key(kSpaceKey)->toolTip(), u"Leertaste betätigen"_s);
        h.Press(kShiftKey);
        QCOMPARE(h.Key(kShiftKey)->text(), u"SHIFT"_s);
        QVERIFY(h.Key(kShiftKey)->isChecked());
        QCOMPARE(h.Key(19)->accessibleName(), u"A"_s);
        for (const int index : {19, 20, 49, kShiftKey, 19}) { // A, B, Ä, shift, a
            h.Press(index);
        }
        QCOMPARE(h.Key(kShiftKey)->text(), u"shift"_s);
        QCOMPARE(h.Key(19)->accessibleName(), u"a"_s);
        QCOMPARE(h.txtCode.text(), u"ABÄa"_s);
        h.keyboard.SetLanguage(kSpanish);
        QCOMPARE(h.Key(kBackspaceKey)->accessibleName(), Catalogue(kSpanish, kRemoveLastKeyName));
        QCOMPARE(h.Key(0)->accessibleName(), u"ñ"_s);
    }

    // Every key and option lies inside the keyboard, and two that can be clicked share at most
    // their border line (a pixel thick, two when doubled; the greyed "\\" lies on the edge of
    // "0"); every place and size doubles or halves once, whichever option is clicked again; no
    // font changes.
    void SizeSwitchDoublesAndHalvesOnce() {
        Harness h(kGermanLayout);
        const QList<QAbstractButton*> parts = h.keyboard.findChildren<QAbstractButton*>();
        QList<QRect> placesAt1x;
        for (const QAbstractButton* part : parts) {
            placesAt1x << part->geometry();
        }
        const QSize windowAt1x = h.keyboard.size();
        const QFont font = h.Key(19)->font();
        for (const int option : {0, 1, 1, 0, 0}) {
            auto* clicked = h.Find<QRadioButton>(u"Option1_%1"_s.arg(option));
            QTest::mouseClick(clicked, Qt::LeftButton, {}, QPoint(6, clicked->height() / 2));
            const int zoom = option + 1;
            QCOMPARE(h.keyboard.ZoomFactor(), zoom);
            QCOMPARE(h.keyboard.size(), windowAt1x * zoom);
            for (qsizetype i = 0; i < parts.size(); ++i) {
                const QRect place = parts[i]->geometry();
                QCOMPARE(place, QRect(placesAt1x[i].topLeft() * zoom, placesAt1x[i].size() * zoom));
                QVERIFY(h.keyboard.rect().contains(place));
                for (qsizetype j = 0; j < i && parts[i]->isEnabled(); ++j) {
                    const QRect shared = parts[j]->geometry() & place;
                    QVERIFY2(!parts[j]->isEnabled() ||
                                 std::min(shared.width(), shared.height()) <= zoom,
                             qPrintable(parts[j]->objectName() + u" "_s + parts[i]->objectName()));
                }
            }
            QCOMPARE(h.Key(19)->font(), font);
        }
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::FrmTastTest)
#include "FrmTastTest.moc"
