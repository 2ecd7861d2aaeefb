#pragma once

#include "files/FileError.h"
#include "i18n/TextIds.h"

#include <string>

namespace kelvora {

// FileErrorMessage is how the window tells a person why a file job ended: a catalogue text,
// and for the general error (103 "Error:") a second text that describes the cause, with
// "%s" naming the file. id 0 means there is nothing to tell (success, or the person cancelled).
struct FileErrorMessage {
    int id = 0;
    int descriptionId = 0;

    bool operator==(const FileErrorMessage&) const = default;
};

// The general error text, followed by a blank and the description.
// "%d entries were left out; everything else is done:", followed by the entries.

struct WindowContext;

// MessageForFileError maps a core error to its catalogue texts. This is the one place where
// the window decides which message an error gets.
[[nodiscard]] FileErrorMessage MessageForFileError(FileError error);

// ShowFileError tells the person why a job ended, naming result.name (or fallbackName when
// the job named no file). Nothing is shown for success or cancel.
void ShowFileError(const WindowContext& context, const FileJobResult& result,
                   const std::string& fallbackName);

} // namespace kelvora
