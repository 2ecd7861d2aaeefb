#include "app/FileErrorMessage.h"

#include "app/WindowContext.h"

namespace kelvora {

FileErrorMessage MessageForFileError(FileError error) {
    switch (error) {
    case FileError::None:
    case FileError::Cancelled:
        return {};
    case FileError::NothingToDo:
        return {114};
    case FileError::NoUsableContent:
        return {108};
    case FileError::WrongPassphrase:
        return {194};
    case FileError::OutputExists:
        return {kGeneralErrorId, 513};
    case FileError::NameTooLong:
        return {kGeneralErrorId, 510};
    case FileError::UnsafeName:
        return {kGeneralErrorId, 511};
    case FileError::ReadFailed:
        return {kGeneralErrorId, 512};
    case FileError::WriteFailed:
        return {kGeneralErrorId, 513};
    case FileError::DamagedData:
        return {kGeneralErrorId, 514};
    case FileError::CompressFailed:
        return {kGeneralErrorId, 515};
    }
    return {kGeneralErrorId, 513};
}

void ShowFileError(const WindowContext& context, const FileJobResult& result,
                   const std::string& fallbackName) {
    const FileErrorMessage message = MessageForFileError(result.error);
    if (message.id == 0) {
        return;
    }
    QString text = context.Text(message.id);
    if (message.descriptionId != 0) {
        const std::string& name = result.name.empty() ? fallbackName : result.name;
        text += u' ' + context.Text(message.descriptionId, QString::fromStdString(name));
    }
    context.messages.ShowMessage(message.id, text, MessageService::Icon::Critical, QString());
}

} // namespace kelvora
