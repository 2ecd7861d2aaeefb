#include "app/FileErrorMessage.h"

#include "app/WindowContext.h"
#include "i18n/TextIds.h"

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
        return {kCheckNamesAndPassphraseText};
    case FileError::NoUsableContent:
        return {kNoUsableContentText};
    case FileError::WrongPassphrase:
        return {kWrongPassphraseText};
    case FileError::OutputExists:
        return {kGeneralErrorId, kCannotWriteText};
    case FileError::NameTooLong:
        return {kGeneralErrorId, kNameTooLongText};
    case FileError::UnsafeName:
        return {kGeneralErrorId, kNameLeavesFolderText};
    case FileError::ReadFailed:
        return {kGeneralErrorId, kCannotReadText};
    case FileError::WriteFailed:
        return {kGeneralErrorId, kCannotWriteText};
    case FileError::DamagedData:
        return {kGeneralErrorId, kDamagedDataText};
    case FileError::CompressFailed:
        return {kGeneralErrorId, kCannotCompressText};
    case FileError::OutputIsInput:
        return {kGeneralErrorId, kInputInsideOutputText};
    case FileError::LinkInPath:
        return {kGeneralErrorId, kLinkInPathText};
    case FileError::NotRegularFile:
        return {kGeneralErrorId, kNotRegularFileText};
    case FileError::SizeUnknown:
        return {kGeneralErrorId, kSizeUnknownText};
    case FileError::LinkToFolder:
        return {kGeneralErrorId, kLinkToFolderText};
    case FileError::EmptyFolder:
        return {kGeneralErrorId, kEmptyFolderText};
    case FileError::NameNotStorable:
        return {kGeneralErrorId, kNameNotStorableText};
    case FileError::DuplicateName:
        return {kGeneralErrorId, kDuplicateNameText};
    case FileError::EntriesLeftOut:
        return {kEntriesLeftOutId};
    }
    return {kGeneralErrorId, kCannotWriteText};
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
