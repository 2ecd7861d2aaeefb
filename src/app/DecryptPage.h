#pragma once

#include <QWidget>

class QLineEdit;

namespace kelvora {

struct WindowContext;

// DecryptPage is FrameDecrypt, the decrypt page of the files page: the container to decrypt
// TxtDecrFile and the folder to restore into TxtDecrOutPath.
class DecryptPage : public QWidget {
    Q_OBJECT

public:
    explicit DecryptPage(WindowContext& context, QWidget* parent = nullptr);

    // SetContainer names the container to decrypt and proposes its own folder as the output.
    void SetContainer(const QString& path, const QString& folder);
    QWidget* FirstField() const;

private:
    WindowContext& m_context;
    QLineEdit* m_txtDecrFile = nullptr;
    QLineEdit* m_txtDecrOutPath = nullptr;
};

} // namespace kelvora
