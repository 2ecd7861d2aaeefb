#include "app/PassphraseArea.h"

#include "app/DecryptPage.h"
#include "app/FileTree.h"
#include "app/SharedSecurityPanel.h"
#include "app/WindowHarness.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "tools/PassphraseRating.h"

#include <QRadioButton>
#include <QScrollBar>
#include <QToolButton>

namespace kelvora {

using namespace Qt::StringLiterals;
using namespace testing;

namespace {

const QString kAlphaBetaGamma = u"αβγ"_s;

// EnterKeys selects shared security on the files page and enters the keys through the
// scroll bar, key 1 first.
void EnterKeys(Harness& h, const QStringList& keys) {
    h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kFilesTab);
    h.Click("optMults_1");
    h.Find<QLineEdit>("txtKeyNum")->setText(QString::number(keys.size()));
    for (int i = 0; i < keys.size(); ++i) {
        h.Find<QScrollBar>("KeyScroll")->setValue(i + 1);
        h.Find<QLineEdit>("TxtCode")->setText(keys[i]);
    }
}

// RunCliWithKeys runs kelvora-cli with one --key-file per key, key 1 first.
QString RunCliWithKeys(QStringList args, const QStringList& keys, const QString& input) {
    const FileTree folder;
    for (int i = 0; i < keys.size(); ++i) {
        args << u"--key-file"_s << folder.Write(u"key%1"_s.arg(i), keys[i].toUtf8() + '\n');
    }
    return RunCli(args, input, QString());
}

// ShowSpy notes whether the widget it watches was shown.
struct ShowSpy : QObject {
    bool shown = false;
    bool eventFilter(QObject*, QEvent* event) override {
        shown = shown || event->type() == QEvent::Show;
        return false;
    }
};

// Warnings is what the warning lines show.
QString Warnings(Harness& h) {
    return h.Find("LblPwdWarning")->isHidden() ? QString() : h.Text("LblPwdWarning");
}

// Places shows the ten key places: '#' filled, '.' empty, '-' hidden.
QString Places(Harness& h) {
    QString places;
    for (int i = 0; i < kSharedKeySlots; ++i) {
        const auto* place = FindControl<KeyPlace>(&h.window, u"SchlusselPlatz_%1"_s.arg(i));
        places += !place->isVisibleTo(&h.window.Passphrase().SharedSecurity()) ? u'-'
                  : place->IsFilled()                                          ? u'#'
                                                                               : u'.';
    }
    return places;
}

// SetCount types count over the key count, as a person would.
void SetCount(Harness& h, const char* count) {
    auto* field = h.Find<QLineEdit>("txtKeyNum");
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, QString::fromLatin1(count));
}

// LeaveCount moves the focus from the key count by the keyboard.
void LeaveCount(Harness& h) {
    h.Find("LstCryptFiles")->setFocus(Qt::TabFocusReason);
    QApplication::processEvents();
}

} // namespace

class PassphraseAreaTest : public QObject {
    Q_OBJECT

private slots:
    // The display shows the core's rating of the box (its bounds are the rating's own test):
    // the stars, the lamps and the sentence in the window's language.
    void RatingShowsTheCoresVerdict() {
        Harness h(kSpanish);
        QCOMPARE(h.Rating().left(5), u"00000"_s); // no star before the first rating
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
        QCOMPARE(h.Rating(), u"11111 001"_s); // rated as typed
    }

    // A character the key cannot hold refuses encryption by name, is warned of while typing,
    // and is taken as "?" for decryption, so that texts made elsewhere still open.
    void CharactersTheKeyCannotHold() {
        const QString alpha = u"'α' (U+03B1)"_s;
        Harness h(kGerman);
        for (const auto& [passphrase, warnings] :
             {std::pair{u"short"_s, QString()},
              {u"ab"_s + kAlphaBetaGamma, Catalogue(kGerman, 589, alpha)},
              {QString(32, u'x') + u"ä"_s, Catalogue(kGerman, 590)},
              {QString(32, u'ä'), QString()}}) {
            h.Fill({}, passphrase);
            QCOMPARE(Warnings(h), warnings);
        }
        h.Fill({}, QString(33, u'x') + kAlphaBetaGamma);
        h.window.SetLanguage(kFrench);
        QCOMPARE(Warnings(h), Catalogue(kFrench, 589, alpha) + u"\n"_s + Catalogue(kFrench, 590));

        h.Fill(u"plain"_s, kAlphaBetaGamma);
        h.Click("Command1");
        QCOMPARE(h.messages.ShownIds(), QList<int>{588});
        QVERIFY(h.messages.shown[0].text.contains(alpha));
        QCOMPARE(h.Results(), u"plain"_s);
        QCOMPARE(h.Passphrase(), kAlphaBetaGamma);
        CRijndael cipher;
        const TextResult made = EncryptText(cipher, MakePassphraseKey("???").bytes(),
                                            WithBanner(kEnglish, "elsewhere"), h.random);
        h.Fill(QString::fromStdString(made.text), kAlphaBetaGamma);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kEnglish) + u"\nelsewhere"_s);
    }

    // In shared mode the panel shows with its captions and takes the focus; the text page hides
    // it and the mode buttons but keeps the mode; the single passphrase hides it and gives the
    // focus back to the box.
    void SharedPanelShowsAndTakesTheFocusInSharedModeOnly() {
        Harness h;
        h.Activate();
        const auto shown = [&h] {
            return h.Names({"optMults_0", "optMults_1", "pctSharedSecurity"},
                           [](QWidget* w) { return w->isVisible(); });
        };
        QCOMPARE(shown(), u"optMults_0 optMults_1"_s);
        h.Click("optMults_1");
        QCOMPARE(shown(), u"optMults_0 optMults_1 pctSharedSecurity"_s);
        QCOMPARE(QApplication::focusWidget(), h.Find("txtKeyNum"));
        QCOMPARE(h.Text("lblKeyOf"), u"1/3"_s);
        QCOMPARE(h.Find<QToolButton>("lblNextKey_0")->toolTip(), u"Go to next key"_s);
        QCOMPARE(h.Find<QToolButton>("lblNextKey_1")->toolTip(), u"Go to previous key"_s);
        h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kTextTab);
        QCOMPARE(shown(), QString());
        QVERIFY(h.window.Passphrase().SharedSecurity().IsShared());
        h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kFilesTab);
        QCOMPARE(shown(), u"optMults_0 optMults_1 pctSharedSecurity"_s);
        h.Click("optMults_0");
        QCOMPARE(shown(), u"optMults_0 optMults_1"_s);
        QCOMPARE(QApplication::focusWidget(), h.Find("TxtCode"));
    }

    // The arrows reach the state's handlers (whose rules are its own test): the back arrow is
    // lblNextKey_1, neither moves the scroll bar, and a mode switch throws every key away.
    void ArrowsWalkTheKeysAndAModeSwitchForgetsThem() {
        Harness h;
        EnterKeys(h, {u"a"_s, u"b"_s, u"c"_s});
        QCOMPARE(Places(h), u"###-------"_s);
        h.Click("lblNextKey_1");
        QCOMPARE(h.Text("lblKeyOf"), u"2/3"_s);
        QCOMPARE(h.Passphrase(), u"b"_s);
        QCOMPARE(h.Find<QScrollBar>("KeyScroll")->value(), 3);
        h.Click("lblNextKey_0");
        QCOMPARE(h.Text("lblKeyOf"), u"3/3"_s);
        QCOMPARE(h.Passphrase(), u"c"_s);
        h.Click("optMults_0");
        QCOMPARE(h.Passphrase(), QString());
        h.Click("optMults_1");
        QCOMPARE(Places(h), u"...-------"_s);
    }

    // A count out of range keeps the focus with one message, even when a command is clicked
    // meanwhile; a count that is not a number reads as 2, a count of 1 means a single passphrase.
    void CountIsCheckedWhenTheFieldIsLeft() {
        Harness h;
        h.Activate();
        h.Click("optMults_1");
        SetCount(h, "12");
        QCOMPARE(h.Text("lblKeyOf"), u"1/12"_s);
        LeaveCount(h);
        QCOMPARE(h.messages.ShownIds(), QList<int>{kKeyCountMessageId});
        QTRY_COMPARE(QApplication::focusWidget(), h.Find("txtKeyNum"));
        SharedSecurityPanel& panel = h.window.Passphrase().SharedSecurity();
        QVERIFY(!panel.BuildKey().has_value());
        QCOMPARE(h.messages.ShownIds(), QList<int>{kKeyCountMessageId});
        QVERIFY(!panel.BuildKey().has_value());
        QCOMPARE(h.messages.ShownIds(), (QList<int>{kKeyCountMessageId, kKeyCountMessageId}));
        h.messages.shown.clear();

        SetCount(h, "x");
        QCOMPARE(h.Find<QLineEdit>("txtKeyNum")->text(), u"2"_s);
        QCOMPARE(Places(h), u"..--------"_s);
        SetCount(h, "1");
        LeaveCount(h);
        QVERIFY(!panel.IsShared());
        QVERIFY(h.Find<QRadioButton>("optMults_0")->isChecked());
        QCOMPARE(h.Find<QLineEdit>("txtKeyNum")->text(), u"2"_s);
        QVERIFY(h.messages.shown.isEmpty());

        // A made passphrase hides the sixth key place until the count changes.
        h.Click("optMults_1");
        SetCount(h, "7");
        h.Click("cmdPassgen");
        QCOMPARE(Places(h), u"#....-.---"_s);
        SetCount(h, "8");
        QCOMPARE(Places(h), u"#.......--"_s);
    }

    // A text and a container that kelvora-cli made under three key files open in the window with
    // the same keys, on the text page and on the decrypt page; the keys are gone afterwards.
    void CliWorkUnderThreeKeysOpensInSharedMode() {
        const QStringList keys{u"Schlüssel eins"_s, u"b"_s, u"c"_s};
        FileTree tree;
        tree.Write(u"in/a/note.txt"_s, "shared contents");
        const QString container = tree.Path(u"in.vexo"_s);
        const QString cli = RunCliWithKeys(
            {u"encrypt"_s, u"-q"_s, u"-o"_s, container, tree.Path(u"in"_s)}, keys, QString());
        QVERIFY2(!cli.startsWith(u"failed"_s), qPrintable(cli));
        const QString encrypted = RunCliWithKeys({u"encrypt-text"_s}, keys, u"geteilt"_s);
        QVERIFY2(!encrypted.startsWith(u"failed"_s), qPrintable(encrypted));

        Harness h;
        EnterKeys(h, keys);
        h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kTextTab);
        h.Find<QPlainTextEdit>("txtResults")->setPlainText(encrypted);
        h.Click("Command2");
        QCOMPARE(h.Results(), BannerOf(kEnglish) + u"\ngeteilt"_s);
        QCOMPARE(h.Passphrase(), QString());
        for (int slot = 0; slot < kSharedKeySlots; ++slot) {
            QCOMPARE(h.window.Passphrase().SharedSecurity().State().Slot(slot), std::string());
        }
        QCOMPARE(Places(h), u"...-------"_s);

        h.Find<DecryptPage>("FrameDecrypt")->SetContainer(container, tree.Path(u"out"_s));
        EnterKeys(h, keys);
        h.Find<LightTab>("TabFileCrypt")->SetActiveTab(FCrypt::kDecryptTab);
        h.Click("Command5");
        QCOMPARE(h.messages.ShownIds(), QList<int>{});
        QCOMPARE(tree.Contents(u"out/in"_s), tree.Contents(u"in"_s));
        QCOMPARE(h.window.Passphrase().SharedSecurity().State().Slot(0), std::string());
        QCOMPARE(h.Passphrase(), QString());
    }

    void AnEmptyKeyStopsBeforeTheBusyState() {
        Harness h;
        EnterKeys(h, {u"a"_s, QString(), u"c"_s});
        h.Find<LightTab>("TabStr")->SetActiveTab(FCrypt::kTextTab);
        h.Find<QPlainTextEdit>("txtResults")->setPlainText(u"AAAA"_s);
        ShowSpy busy;
        h.Find("FrameW")->installEventFilter(&busy);
        h.Click("Command2");
        QVERIFY(!busy.shown);
        QCOMPARE(h.messages.ShownIds(), QList<int>{386});
        QCOMPARE(h.messages.shown[0].text, Catalogue(kEnglish, 386, u"2"_s));
        QCOMPARE(h.Results(), u"AAAA"_s);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::PassphraseAreaTest)
#include "PassphraseAreaTest.moc"
