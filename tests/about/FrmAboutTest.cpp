#include "about/FrmAbout.h"

#include "app/RecordingMessageService.h"
#include "common/Version.h"
#include "i18n/Catalogue.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace kelvora {
namespace {

QString Catalogue(int languageOffset, int germanId, const QString& s = {}) {
    return QString::fromStdString(GetText(languageOffset, germanId, s.toStdString()));
}

// Harness owns a shown welcome window whose panel comes from a fixed draw.
struct Harness {
    testing::RecordingMessageService messages;
    QPointer<FrmAbout> window;

    Harness(double draw, int languageOffset)
        : window(new FrmAbout(messages, languageOffset, draw)) {
        window->show();
    }
    ~Harness() { delete window; }

    template <typename Widget = QWidget> Widget* Find(const QString& name) {
        auto* widget = window->findChild<Widget*>(name);
        if (widget == nullptr) {
            qFatal("no control named %s", qPrintable(name));
        }
        return widget;
    }
    QString Shown(const char* name) { return Find<QLabel>(QString::fromLatin1(name))->text(); }
    void ClickFlag(const char* name) {
        QTest::mouseClick(Find(QString::fromLatin1(name)), Qt::LeftButton);
    }
    // ClickLink follows element index of Label2 and returns the address it opened.
    QString ClickLink(int index) {
        QTest::mouseClick(Find(QStringLiteral("Label2_%1").arg(index)), Qt::LeftButton);
        return messages.openedUrls.isEmpty() ? QString() : messages.openedUrls.takeLast();
    }
};

constexpr double kFirstDraw = 0.33;
constexpr double kSecondDraw = 0.66;
constexpr double kThirdDraw = 0.6600001;

} // namespace

class FrmAboutTest : public QObject {
    Q_OBJECT

private slots:
    void PanelForFixedDraws_data();
    void PanelForFixedDraws();
    void LinksByPanelAndLanguage_data();
    void LinksByPanelAndLanguage();
    void FlagsRefillTheTexts();
    void LinkFollowedFromTheKeyboard();
    void StartClosesTheWindow();
};

void FrmAboutTest::PanelForFixedDraws_data() {
    QTest::addColumn<double>("draw");
    QTest::addColumn<int>("headingId");
    QTest::addColumn<QStringList>("links");
    QTest::newRow("zero") << 0.0 << 562 << QStringList{u"Label2_1"_qs};
    QTest::newRow("first bound") << kFirstDraw << 562 << QStringList{u"Label2_1"_qs};
    QTest::newRow("above first") << 0.3300001 << 201 << QStringList{u"Label2_2"_qs, u"Label2_5"_qs};
    QTest::newRow("second bound") << kSecondDraw << 201
                                  << QStringList{u"Label2_2"_qs, u"Label2_5"_qs};
    QTest::newRow("above second") << kThirdDraw << 570 << QStringList{u"Label2_3"_qs};
}

void FrmAboutTest::PanelForFixedDraws() {
    QFETCH(double, draw);
    QFETCH(int, headingId);
    QFETCH(QStringList, links);
    Harness h(draw, kEnglish);
    QCOMPARE(h.Shown("LblHeading"), Catalogue(kEnglish, headingId, u"Kelvora Toolbox"_qs));
    QStringList found;
    for (const QLabel* label : h.window->findChildren<QLabel*>()) {
        if (label->objectName().startsWith(u"Label2_"_qs)) {
            found << label->objectName();
        }
    }
    found.sort();
    QCOMPARE(found, links);
}

void FrmAboutTest::LinksByPanelAndLanguage_data() {
    QTest::addColumn<double>("draw");
    QTest::addColumn<QString>("flag");
    QTest::addColumn<int>("label");
    QTest::addColumn<QString>("address");
    const QString partner = u"https://partner.kelvora.net/shop.php?lang=%1"
                            "&promo=KV-TRIAL30&link=kelvora-crypt"_qs;
    const QString tool = u"https://www.kelvora.net/cookie.php?aref=91"_qs;
    const QString start = u"https://www.kelvora.net/?aref=91"_qs;
    const QString privacy = u"https://privacy.kelvora.net/?aref=0"_qs;
    const std::pair<const char*, const char*> flags[] = {
        {"ImageDE", "0"}, {"ImageEN", "1000"}, {"ImageES", "2000"}, {"ImageFR", "3000"}};
    for (const auto& [flag, base] : flags) {
        const bool german = QByteArray(base) == "0";
        const bool aboveEnglish = QByteArray(base).toInt() > 1000;
        const QString flagName = QString::fromLatin1(flag);
        QTest::addRow("privacy %s", base) << kFirstDraw << flagName << 1 << privacy;
        QTest::addRow("tool %s", base)
            << kSecondDraw << flagName << 2 << (aboveEnglish ? start : tool);
        QTest::addRow("start page %s", base) << kSecondDraw << flagName << 5 << start;
        QTest::addRow("partner %s", base)
            << kThirdDraw << flagName << 3 << partner.arg(german ? u"de"_qs : u"en"_qs);
    }
}

void FrmAboutTest::LinksByPanelAndLanguage() {
    QFETCH(double, draw);
    QFETCH(QString, flag);
    QFETCH(int, label);
    QFETCH(QString, address);
    Harness h(draw, kSpanish);
    h.ClickFlag(flag.toLatin1().constData());
    QCOMPARE(h.ClickLink(label), address);
    QVERIFY(h.messages.openedUrls.isEmpty());
}

void FrmAboutTest::LinkFollowedFromTheKeyboard() {
    Harness h(kFirstDraw, kEnglish);
    h.window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(h.window));
    auto* link = h.Find<QLabel>(u"Label2_1"_qs);
    QCOMPARE(QAccessible::queryAccessibleInterface(link)->text(QAccessible::Name),
             Catalogue(kEnglish, 565));
    // Tab from the flags walks into the link; Enter follows it.
    h.Find(u"ImageFR"_qs)->setFocus(Qt::TabFocusReason);
    for (int step = 0; step < 8 && !link->hasFocus(); ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QVERIFY(link->hasFocus());
    QTest::keyClick(link, Qt::Key_Return);
    QCOMPARE(h.messages.openedUrls, QStringList{u"https://privacy.kelvora.net/?aref=0"_qs});
}

void FrmAboutTest::FlagsRefillTheTexts() {
    Harness h(kSecondDraw, kGerman);
    QSignalSpy chosen(h.window.data(), &FrmAbout::LanguageChosen);
    QCOMPARE(h.window->LanguageBase(), 0);
    QVERIFY(h.Find(u"LblTool_1"_qs)->isVisible());
    QCOMPARE(h.Shown("LblTool_1"), u"• "_qs + Catalogue(kGerman, 203));
    const std::pair<const char*, int> flags[] = {
        {"ImageFR", kFrench}, {"ImageES", kSpanish}, {"ImageEN", kEnglish}, {"ImageDE", kGerman}};
    for (const auto& [flag, language] : flags) {
        h.ClickFlag(flag);
        QCOMPARE(chosen.takeLast().at(0).toInt(), language);
        QCOMPARE(h.window->windowTitle(), Catalogue(language, 200));
        QCOMPARE(h.Shown("LblWelcome"), Catalogue(language, 200));
        QCOMPARE(h.Shown("LblDescription"), Catalogue(language, 560));
        QCOMPARE(h.Shown("LblVersion"),
                 Catalogue(language, 561, QString::fromLatin1(kVersionText)));
        QCOMPARE(h.Shown("LblHeading"), Catalogue(language, 201, u"Kelvora Toolbox"_qs));
        QCOMPARE(h.Shown("LblParagraph"), Catalogue(language, 566));
        QCOMPARE(h.Shown("LblAction"), Catalogue(language, 567));
        QCOMPARE(h.Shown("Label2_5"), Catalogue(language, 569));
        QCOMPARE(h.Shown("Label2_2"), Catalogue(language, 568));
        QCOMPARE(h.Find<QPushButton>(u"Command1"_qs)->text(), Catalogue(language, 152));
        // French has no tool descriptions: they are left out, not shown as markers.
        QCOMPARE(h.Find(u"LblTool_0"_qs)->isVisible(), language != kFrench);
        QCOMPARE(h.Find(QString::fromLatin1(flag))->property("BorderStyle").toInt(), 1);
        QCOMPARE(h.window->Panel(), AboutPanel::MakerTool);
    }
    QCOMPARE(h.Find(u"ImageFR"_qs)->property("BorderStyle").toInt(), 0);
    QCOMPARE(h.Find(u"ImageES"_qs)->accessibleName(), u"Español"_qs);
    // From the keyboard: Tab reaches a flag, Space or Enter chooses it.
    QVERIFY(h.Find(u"ImageES"_qs)->focusPolicy() & Qt::TabFocus);
    QTest::keyClick(h.Find(u"ImageES"_qs), Qt::Key_Space);
    QCOMPARE(h.window->LanguageBase(), 2000);
    QTest::keyClick(h.Find(u"ImageEN"_qs), Qt::Key_Return);
    QCOMPARE(h.Shown("LblParagraph"), Catalogue(kEnglish, 566));
}

void FrmAboutTest::StartClosesTheWindow() {
    Harness h(0.5, kFrench);
    QSignalSpy start(h.window.data(), &FrmAbout::StartRequested);
    QTest::mouseClick(h.Find(u"Command1"_qs), Qt::LeftButton);
    QCOMPARE(start.size(), 1);
    QTRY_VERIFY(h.window.isNull());
}

} // namespace kelvora

QTEST_MAIN(kelvora::FrmAboutTest)
#include "FrmAboutTest.moc"
