#include "tools/FrmTast.h"

#include "app/WindowTestTools.h"
#include "i18n/TextIds.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace kelvora {
namespace {

using testing::Catalogue;

constexpr std::uint32_t kGermanLayout = 0x04070407;
constexpr std::uint32_t kEnglishLayout = 0x04090409;
constexpr std::uint32_t kSpanishLayout = 0x040A040A;
constexpr std::uint32_t kSwissLayout = 0x08070807;

// Harness holds a passphrase box and a keyboard that types into it.
struct Harness {
    QLineEdit txtCode;
    FrmTast* keyboard;

    explicit Harness(std::uint32_t layout, int languageOffset = kEnglish)
        : keyboard(new FrmTast(txtCode, languageOffset, layout)) {
        keyboard->setAttribute(Qt::WA_DeleteOnClose, false);
        keyboard->show();
    }
    ~Harness() { delete keyboard; }

    template <typename Widget = QPushButton> Widget* Find(const QString& name) {
        return testing::FindControl<Widget>(keyboard, name);
    }
    QPushButton* Key(int index) { return Find(QStringLiteral("cmdNr_%1").arg(index)); }
    void Press(int index) { QTest::mouseClick(Key(index), Qt::LeftButton); }
    // Option clicks the size option on its round indicator, at the left of the control.
    void Option(int index) {
        auto* option = Find<QRadioButton>(QStringLiteral("Option1_%1").arg(index));
        QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(6, option->height() / 2));
    }
};

} // namespace

class FrmTastTest : public QObject {
    Q_OBJECT

private slots:
    void TypesByLayoutAndShift_data() {
        QTest::addColumn<uint>("layout");
        QTest::addColumn<bool>("shifted");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("typed");
        // What each key types is the key handler's table; these rows prove that the window
        // passes on its layout, its shift state and the pressed key.
        QTest::newRow("German a") << uint(kGermanLayout) << false << 19 << u"a"_qs;
        QTest::newRow("German Z shifted") << uint(kGermanLayout) << true << 44 << u"Z"_qs;
        QTest::newRow("English y on Z place") << uint(kEnglishLayout) << false << 44 << u"y"_qs;
        QTest::newRow("Spanish Ç shifted") << uint(kSpanishLayout) << true << 52 << u"Ç"_qs;
        QTest::newRow("German && types two") << uint(kGermanLayout) << false << 59 << u"&&"_qs;
    }

    void TypesByLayoutAndShift() {
        QFETCH(uint, layout);
        QFETCH(bool, shifted);
        QFETCH(int, index);
        QFETCH(QString, typed);
        Harness h(layout);
        if (shifted) {
            h.Press(kShiftKey);
        }
        h.txtCode.setText(u"pw"_qs);
        h.Press(index);
        QCOMPARE(h.txtCode.text(), u"pw"_qs + typed);
    }

    void BackspaceRemovesLastAndLeavesEmptyAlone() {
        Harness h(kGermanLayout);
        h.Press(kBackspaceKey);
        QCOMPARE(h.txtCode.text(), QString());
        h.txtCode.setText(u"aäb"_qs);
        h.Press(kBackspaceKey);
        QCOMPARE(h.txtCode.text(), u"aä"_qs);
        h.Press(kBackspaceKey);
        h.Press(kBackspaceKey);
        h.Press(kBackspaceKey);
        QCOMPARE(h.txtCode.text(), QString());
    }

    void ShiftStaysUntilPressedAgain() {
        Harness h(kGermanLayout);
        QCOMPARE(h.Key(kShiftKey)->text(), u"shift"_qs);
        h.Press(kShiftKey);
        QCOMPARE(h.Key(kShiftKey)->text(), u"SHIFT"_qs);
        QVERIFY(h.Key(kShiftKey)->isChecked());
        QCOMPARE(h.Key(19)->accessibleName(), u"A"_qs);
        for (const int index : {19, 20, 49}) { // A, B, Ä
            h.Press(index);
        }
        h.Press(kShiftKey);
        QCOMPARE(h.Key(kShiftKey)->text(), u"shift"_qs);
        QCOMPARE(h.Key(19)->accessibleName(), u"a"_qs);
        h.Press(19);
        QCOMPARE(h.txtCode.text(), u"ABÄa"_qs);
    }

    void InactiveKeysAreGreyed() {
        Harness h(kEnglishLayout);
        for (const int index : {11, 13, 66}) {
            QVERIFY2(!h.Key(index)->isEnabled(), qPrintable(QString::number(index)));
            h.Press(index);
        }
        QCOMPARE(h.txtCode.text(), QString());
        QCOMPARE(h.keyboard->findChildren<QPushButton*>().size(), 66);
    }

    void LayoutFromTheKeyboardLocale() {
        const std::pair<std::uint32_t, const char*> cases[] = {{kGermanLayout, "Ä"},
                                                               {kEnglishLayout, ";"},
                                                               {kSpanishLayout, "´"},
                                                               {kSwissLayout, ";"}};
        for (const auto& [layout, caption] : cases) {
            Harness h(layout);
            QCOMPARE(h.Key(49)->text(), QString::fromUtf8(caption));
        }
        Harness english(kEnglishLayout);
        QCOMPARE(english.Key(60)->text().remove(u'&'), QString()); // shown as a single "&"
        QCOMPARE(english.Key(60)->text(), u"&&"_qs);
        QCOMPARE(english.Key(44)->text(), u"Y"_qs);
    }

    void SizeSwitchDoublesAndHalvesOnce() {
        Harness h(kGermanLayout);
        const QSize windowAt1x = h.keyboard->size();
        const QRect spaceAt1x = h.Key(kSpaceKey)->geometry();
        const QRect optionAt1x = h.Find<QRadioButton>(u"Option1_1"_qs)->geometry();
        const QFont font = h.Key(19)->font();
        QCOMPARE(spaceAt1x, QRect(72, 128, 257, 17));
        QCOMPARE(h.Key(kBackspaceKey)->geometry(), QRect(360, 24, 41, 25));

        h.Option(0); // 1x at normal size: nothing
        QCOMPARE(h.keyboard->size(), windowAt1x);
        for (int round = 0; round < 2; ++round) {
            h.Option(1);
            QCOMPARE(h.keyboard->ZoomFactor(), 2);
            QCOMPARE(h.keyboard->size(), windowAt1x * 2);
            QCOMPARE(h.Key(kSpaceKey)->geometry(), QRect(144, 256, 514, 34));
            QCOMPARE(h.Find<QRadioButton>(u"Option1_1"_qs)->geometry(),
                     QRect(optionAt1x.topLeft() * 2, optionAt1x.size() * 2));
        }
        QCOMPARE(h.Key(19)->font(), font);
        for (int round = 0; round < 2; ++round) {
            h.Option(0);
            QCOMPARE(h.keyboard->ZoomFactor(), 1);
            QCOMPARE(h.keyboard->size(), windowAt1x);
            QCOMPARE(h.Key(kSpaceKey)->geometry(), spaceAt1x);
        }
    }

    void CaptionTipsAndNamesByLanguage() {
        Harness h(kGermanLayout, kFrench);
        QCOMPARE(h.Key(kBackspaceKey)->accessibleName(), Catalogue(kFrench, kRemoveLastKeyName));
        QCOMPARE(h.Key(kShiftKey)->toolTip(), u"Groß-/Kleinschreibung"_qs);
        QCOMPARE(h.Key(kSpaceKey)->toolTip(), u"Leertaste betätigen"_qs);
        h.keyboard->SetLanguage(kSpanish);
        QCOMPARE(h.keyboard->windowTitle(), Catalogue(kSpanish, kScreenKeyboardTitle));
        QCOMPARE(h.Key(kSpaceKey)->text(), Catalogue(kSpanish, kSpaceKeyText));
        QCOMPARE(h.Key(13)->text(), Catalogue(kSpanish, kTabKeyText));
        QCOMPARE(h.Key(kBackspaceKey)->accessibleName(), Catalogue(kSpanish, kRemoveLastKeyName));
        QCOMPARE(h.Key(0)->accessibleName(), u"ñ"_qs);
        QCOMPARE(h.Key(59)->accessibleName(), u"&&"_qs);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::FrmTastTest)
#include "FrmTastTest.moc"
