#include "app/PassphraseArea.h"

#include "app/WindowHarness.h"
#include "tools/PassphraseRating.h"

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::Catalogue;
using testing::Harness;

class PassphraseAreaTest : public QObject {
    Q_OBJECT

private slots:
    // The display shows the core's rating of the box (its bounds are the rating's own test):
    // the stars, the lamps and the sentence in the window's language.
    void RatingShowsTheCoresVerdict() {
        Harness h(kSpanish);
        for (const char* passphrase :
             {"", "abc", "abcde", "abcdefghijkl", "Aa1!~abcdefghijklmnop"}) {
            h.Fill({}, u"something else first"_s);
            h.Fill({}, QString::fromLatin1(passphrase));
            const PassphraseRating rating = PwdBewert(passphrase);
            QString expected = QString(rating.stars, u'1') + QString(5 - rating.stars, u'0') + u' ';
            for (const bool lit : rating.lamps) {
                expected += lit ? u'1' : u'0';
            }
            QCOMPARE(h.Rating(), expected);
            QCOMPARE(h.Sentence(), Catalogue(kSpanish, rating.sentenceId));
        }
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
