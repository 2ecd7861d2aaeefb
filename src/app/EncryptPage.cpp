#include "app/EncryptPage.h"

#include "app/WindowContext.h"
#include "app/WindowParts.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

namespace kelvora {

EncryptPage::EncryptPage(WindowContext& context, QWidget* parent)
    : QWidget(parent), m_context(context) {
    setObjectName(QStringLiteral("FrameEncrypt"));
    auto* layout = parts::Column(this, 6);
    layout->addWidget(
        parts::Caption(QStringLiteral("LblEncrHint"), 144, this, QStringLiteral("hint")));
    layout->addSpacing(4);
    QLabel* listCaption = parts::Caption(QStringLiteral("LblInputFiles"), 145, this);
    layout->addWidget(listCaption);
    m_lstCryptFiles = new QListWidget(this);
    m_lstCryptFiles->setObjectName(QStringLiteral("LstCryptFiles"));
    m_lstCryptFiles->setSelectionMode(QAbstractItemView::ExtendedSelection);
    listCaption->setBuddy(m_lstCryptFiles);
    layout->addWidget(m_lstCryptFiles, 1);
    layout->addSpacing(4);
    QLabel* outputCaption = parts::Caption(QStringLiteral("LblOutputFile"), 146, this);
    layout->addWidget(outputCaption);
    m_txtEncrFileName = parts::Edit(QStringLiteral("TxtEncrFileName"), this, outputCaption);
    layout->addWidget(m_txtEncrFileName);
}

QWidget* EncryptPage::FirstField() const {
    return m_lstCryptFiles;
}

} // namespace kelvora
