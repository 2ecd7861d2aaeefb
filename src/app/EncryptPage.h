#pragma once

#include <QWidget>

class QLineEdit;
class QListWidget;

namespace kelvora {

struct WindowContext;

// EncryptPage is FrameEncrypt, the encrypt page of the files page: the input list
// LstCryptFiles and the output container's name TxtEncrFileName.
class EncryptPage : public QWidget {
    Q_OBJECT

public:
    explicit EncryptPage(WindowContext& context, QWidget* parent = nullptr);

    // FirstField is where the focus goes when the page is shown.
    QWidget* FirstField() const;

private:
    WindowContext& m_context;
    QListWidget* m_lstCryptFiles = nullptr;
    QLineEdit* m_txtEncrFileName = nullptr;
};

} // namespace kelvora
