#include "app/PassphraseArea.h"

#include "app/WindowHarness.h"

#include <QTimer>

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::BannerOf;
using testing::Catalogue;
using testing::Harness;
using testing::RunCli;

class PassphraseAreaTest : public QObject {
    Q_OBJECT

private slots:
    void RatingShowsEachLevelBound_data() {
        QTest::addColumn<QString>("passphrase");
        QTest::addColumn<QString>("rating");
        QTest::addColumn<int>("sentence");
        const auto row = [](const char* name, const QString& passphrase, const char* rating,
                            int sentence) {
            QTest::newRow(name) << passphrase << QString::fromLatin1(rating) << sentence;
        };
        // Scores worked out by hand: lower case only loses 35 %, length counts up to 32.
        const auto q = [](int count) { return QString(count, u'q'); };
        row("empty, 0", QString(), "00000 100", 124);
        row("ab, 4", u"ab"_s, "00000 100", 124);
        row("abc, 6", u"abc"_s, "10000 100", 124);
        row("abcd, 8", u"abcd"_s, "10000 100", 124);
        row("abcde, 10", u"abcde"_s, "11000 110", 125);
        row("11 letters, 22", u"abcdefghijk"_s, "11000 110", 125);
        row("12 letters, 25", u"abcdefghijkl"_s, "11100 010", 126);
        row("24 letters, 49", q(24), "11100 010", 126);
        row("25 letters, 51", q(25), "11110 011", 127);
        row("30 of all classes, 94", u"Aa1!~"_s + q(25), "11110 011", 127);
        row("31 of all classes, 97", u"Aa1!~"_s + q(26), "11111 001", 128);
        row("32 mixed letters, capped 71", u"Ab"_s + q(30), "11110 011", 127);
    }

    void RatingShowsEachLevelBound() {
        QFETCH(QString, passphrase);
        QFETCH(QString, rating);
        QFETCH(int, sentence);
        Harness h(kSpanish);
        h.Fill({}, u"something else first"_s);
        h.Fill({}, passphrase);
        QCOMPARE(h.Rating(), rating);
        QCOMPARE(h.Sentence(), Catalogue(kSpanish, sentence));
    }

    void HiddenPassphraseShowsAgainWhenCreated() {
        Harness h;
        auto* box = h.Find<QLineEdit>("TxtCode");
        h.Fill({}, u"secret"_s);
        h.Click("ChkHPwd");
        QCOMPARE(box->displayText(), u"******"_s);
        h.Click("cmdPassgen");
        QCOMPARE(h.Passphrase().size(), 32);
        QCOMPARE(box->displayText(), h.Passphrase());
        QVERIFY(!h.Find<QAbstractButton>("ChkHPwd")->isChecked());
        QCOMPARE(h.Sentence(), Catalogue(kEnglish, 106));
        QCOMPARE(h.Rating(), u"11111 001"_s);
    }

    // The key is the passphrase's key rule on its Windows-1252 bytes; an empty box shows the
    // message the command names and gives no key. The box keeps its text until Clear.
    void KeysComeFromTheBoxAndClearEmptiesIt() {
        Harness h;
        PassphraseArea& area = h.window.Passphrase();
        QVERIFY(!area.EncryptionKey(1014).has_value());
        QVERIFY(!area.DecryptionKey(114).has_value());
        QCOMPARE(h.messages.ShownIds(), (QList<int>{1014, 114}));
        QCOMPARE(h.messages.shown.first().text, Catalogue(kEnglish, 1014));

        h.Fill({}, u"\u00e4b"_s);
        const std::optional<SecretBytes> key = area.EncryptionKey(1014);
        QVERIFY(key.has_value());
        QCOMPARE(key->bytes().size(), std::size_t{32});
        QCOMPARE(key->bytes()[0], std::uint8_t{0xE4});
        QCOMPARE(key->bytes()[1], std::uint8_t{'b'});
        QVERIFY(area.DecryptionKey(1014)->bytes() == key->bytes());
        QCOMPARE(h.Passphrase(), u"\u00e4b"_s);
        area.Clear();
        QVERIFY(h.Passphrase().isEmpty());
        QVERIFY(area.IsEmpty());
        QCOMPARE(h.messages.shown.size(), 2);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::PassphraseAreaTest)
#include "PassphraseAreaTest.moc"
