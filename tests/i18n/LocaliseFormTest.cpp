#include "i18n/LocaliseForm.h"

#include "i18n/Catalogue.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTextEdit>
#include <QVBoxLayout>
#include <QtTest>
#include <memory>

namespace kelvora {

namespace {

QString Catalogue(int languageOffset, int germanId) {
    const auto text = FindText(languageOffset, germanId);
    return text ? QString::fromUtf8(text->data(), static_cast<qsizetype>(text->size())) : QString();
}

// ShownText reads what a control shows, whatever its kind.
QString ShownText(const QWidget* widget) {
    if (const auto* group = qobject_cast<const QGroupBox*>(widget)) {
        return group->title();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        return button->text();
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        return label->text();
    }
    if (const auto* line = qobject_cast<const QLineEdit*>(widget)) {
        return line->text();
    }
    if (const auto* rich = qobject_cast<const QTextEdit*>(widget)) {
        return rich->toPlainText();
    }
    return qobject_cast<const QPlainTextEdit*>(widget)->toPlainText();
}

// A small window with one control of every kind the localiser labels, some of them nested.
struct SampleForm {
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    QList<QPair<QWidget*, int>> marked;

    template <typename Control> Control* Add(QWidget* parent, int germanId, const char* name) {
        auto* control = new Control(parent);
        control->setObjectName(QString::fromLatin1(name));
        control->setProperty("Tag", QStringLiteral("#%1").arg(germanId));
        parent->layout()->addWidget(control);
        marked.append({control, germanId});
        return control;
    }

    SampleForm() {
        form->setProperty("Tag", QStringLiteral("#394"));
        new QVBoxLayout(form.get());
        auto* group = Add<QGroupBox>(form.get(), 145, "group");
        new QVBoxLayout(group);
        Add<QLabel>(group, 159, "label");
        Add<QCheckBox>(group, 158, "check");
        Add<QRadioButton>(form.get(), 390, "option");
        Add<QPushButton>(form.get(), 161, "button");
        Add<QLineEdit>(form.get(), 153, "line");
        Add<QTextEdit>(group, 149, "rich");
        Add<QPlainTextEdit>(form.get(), 165, "plain");
    }
};

} // namespace

class LocaliseFormTest : public QObject {
    Q_OBJECT

private slots:
    void SwitchingLanguagesRestoresEveryCaption();
    void TextsArriveAsUtf8();
    void TooltipIsReplacedOnlyWhileItIsAMark();
    void OnlyTheFirstAmpersandOfTheTitleGoes();
    void MissingIdLeavesTheControlUnchanged();
    void FlagOfTheLanguageIsMarked_data();
    void FlagOfTheLanguageIsMarked();
};

void LocaliseFormTest::SwitchingLanguagesRestoresEveryCaption() {
    SampleForm sample;
    for (const int language : {kGerman, kFrench, kGerman}) {
        LocaliseForm(sample.form.get(), language);
        QCOMPARE(sample.form->windowTitle(), Catalogue(language, 394));
        for (const auto& [control, germanId] : sample.marked) {
            QCOMPARE(ShownText(control), Catalogue(language, germanId));
        }
    }
}

void LocaliseFormTest::TextsArriveAsUtf8() {
    SampleForm sample;
    LocaliseForm(sample.form.get(), kFrench);
    QCOMPARE(sample.form->findChild<QLabel*>(QStringLiteral("label"))->text(),
             QString::fromUtf8("Qualité de la phrase secrète :"));
}

void LocaliseFormTest::TooltipIsReplacedOnlyWhileItIsAMark() {
    SampleForm sample;
    auto* button = sample.form->findChild<QPushButton*>(QStringLiteral("button"));
    auto* label = sample.form->findChild<QLabel*>(QStringLiteral("label"));
    button->setToolTip(QStringLiteral("#162"));
    label->setToolTip(QStringLiteral("Leertaste betätigen"));

    LocaliseForm(sample.form.get(), kEnglish);
    QCOMPARE(button->toolTip(), QStringLiteral("Decrypt text"));
    LocaliseForm(sample.form.get(), kGerman);
    QCOMPARE(button->toolTip(), QStringLiteral("Decrypt text"));
    QCOMPARE(label->toolTip(), QStringLiteral("Leertaste betätigen"));
}

void LocaliseFormTest::OnlyTheFirstAmpersandOfTheTitleGoes() {
    QWidget form;
    form.setWindowTitle(QStringLiteral("&Datei & Co"));
    LocaliseForm(&form, kGerman);
    QCOMPARE(form.windowTitle(), QStringLiteral("Datei & Co"));

    form.setWindowTitle(QStringLiteral("&Datei"));
    LocaliseForm(&form, kGerman);
    QCOMPARE(form.windowTitle(), QStringLiteral("Datei"));
}

void LocaliseFormTest::MissingIdLeavesTheControlUnchanged() {
    QWidget form;
    auto* back = new QPushButton(QStringLiteral("as designed"), &form);
    back->setProperty("Tag", QStringLiteral("#182"));
    auto* noNumber = new QLabel(QStringLiteral("kept"), &form);
    noNumber->setProperty("Tag", QStringLiteral("#abc"));
    noNumber->setToolTip(QStringLiteral("#182"));

    LocaliseForm(&form, kGerman);
    QCOMPARE(back->text(), QStringLiteral("as designed"));
    QCOMPARE(noNumber->text(), QStringLiteral("kept"));
    QCOMPARE(noNumber->toolTip(), QStringLiteral("#182"));

    LocaliseForm(&form, kSpanish);
    QCOMPARE(back->text(), QString::fromUtf8("Volver al menú principal"));
    LocaliseForm(&form, kFrench);
    QCOMPARE(back->text(), QString::fromUtf8("Volver al menú principal"));
}

void LocaliseFormTest::FlagOfTheLanguageIsMarked_data() {
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("marked");
    QTest::newRow("German") << kGerman << QStringLiteral("ImageDE");
    QTest::newRow("English") << kEnglish << QStringLiteral("ImageEN");
    QTest::newRow("Spanish") << kSpanish << QStringLiteral("ImageES");
    QTest::newRow("French") << kFrench << QStringLiteral("ImageFR");
    QTest::newRow("NoLanguage") << 1000 << QString();
}

void LocaliseFormTest::FlagOfTheLanguageIsMarked() {
    QFETCH(int, language);
    QFETCH(QString, marked);
    QWidget form;
    QList<QLabel*> flags;
    for (const char* name : {"ImageDE", "ImageEN", "ImageES", "ImageFR"}) {
        flags.append(new QLabel(&form));
        flags.last()->setObjectName(QString::fromLatin1(name));
    }
    // The previous language's border must go as well.
    MarkLanguageFlag(&form, kFrench);
    MarkLanguageFlag(&form, language);

    for (const QLabel* flag : flags) {
        const bool expected = flag->objectName() == marked;
        QCOMPARE(flag->frameShape(), expected ? QFrame::Box : QFrame::NoFrame);
        QCOMPARE(flag->property("BorderStyle").toInt(), expected ? 1 : 0);
    }
}

} // namespace kelvora

QTEST_MAIN(kelvora::LocaliseFormTest)
#include "LocaliseFormTest.moc"
