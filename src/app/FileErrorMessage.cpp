#include "app/FileErrorMessage.h"

#include "app/WindowContext.h"

namespace kelvora {

namespace {

// LeftOutText names every entry a job left out, one a line, each with why.
QString LeftOutText(const WindowContext& context, const std::vector<OmittedEntry>& omitted) {
    QString text = context.Text(kEntriesLeftOutId, {}, QString::number(omitted.size()));
    for (const OmittedEntry& entry : omitted) {
        const FileErrorMessage why = MessageForFileError(entry.why);
        const QString name = QString::fromStdString(entry.name);
        text += u'\n' + (why.descriptionId != 0 ? context.Text(why.descriptionId, name) : name);
    }
    return text;
}

} // namespace

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
    case FileError::OutputIsInput:
        return {kGeneralErrorId, 650};
    case FileError::LinkInPath:
        return {kGeneralErrorId, 651};
    case FileError::NotRegularFile:
        return {kGeneralErrorId, 652};
    case FileError::SizeUnknown:
        return {kGeneralErrorId, 653};
    case FileError::LinkToFolder:
        return {kGeneralErrorId, 654};
    case FileError::EmptyFolder:
        return {kGeneralErrorId, 655};
    case FileError::NameNotStorable:
        return {kGeneralErrorId, 656};
    case FileError::DuplicateName:
        return {kGeneralErrorId, 657};
    case FileError::EntriesLeftOut:
        return {kEntriesLeftOutId};
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
    if (result.error == FileError::EntriesLeftOut) {
        text = LeftOutText(context, result.omitted);
    }
    if (message.descriptionId != 0) {
        const std::string& name = result.name.empty() ? fallbackName : result.name;
        text += u' ' + context.Text(message.descriptionId, QString::fromStdString(name));
    }
    context.messages.ShowMessage(message.id, text, MessageService::Icon::Critical, QString());
}

} // namespace kelvora
