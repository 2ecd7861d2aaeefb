#include "app/DecryptPage.h"

#include "app/WindowContext.h"
#include "app/WindowParts.h"

#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kelvora {

DecryptPage::DecryptPage(WindowContext& context, QWidget* parent)
    : QWidget(parent), m_context(context) {
    setObjectName(QStringLiteral("FrameDecrypt"));
    auto* layout = parts::Column(this, 6);
    QLabel* fileCaption = parts::Caption(QStringLiteral("LblDecrFile"), 148, this);
    layout->addWidget(fileCaption);
    m_txtDecrFile = parts::Edit(QStringLiteral("TxtDecrFile"), this, fileCaption);
    layout->addWidget(m_txtDecrFile);
    layout->addSpacing(8);
    QLabel* folderCaption = parts::Caption(QStringLiteral("LblDecrOutPath"), 153, this);
    layout->addWidget(folderCaption);
    m_txtDecrOutPath = parts::Edit(QStringLiteral("TxtDecrOutPath"), this, folderCaption);
    layout->addWidget(m_txtDecrOutPath);
    layout->addStretch();
}

void DecryptPage::SetContainer(const QString& path, const QString& folder) {
    m_txtDecrFile->setText(path);
    m_txtDecrOutPath->setText(folder);
}

QWidget* DecryptPage::FirstField() const {
    return m_txtDecrFile;
}

} // namespace kelvora
