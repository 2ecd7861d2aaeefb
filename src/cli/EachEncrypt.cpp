#include "cli/EachEncrypt.h"

#include "cli/Commands.h"
#include "cli/FileErrorText.h"
#include "cli/FileProgress.h"
#include "cli/PassphraseSource.h"
#include "common/Random.h"
#include "files/EncryptJob.h"
#include "files/OutputFolder.h"
#include "files/StoredName.h"

#include <ostream>

namespace kelvora::cli {
namespace {

// MadeFoldersFor makes the folders of relative below root, level by level and never
// through a symbolic link.
Result<void, Errno> MadeFoldersFor(const std::string& root, const std::string& relative) {
    OutputFolder folder;
    if (auto opened = folder.Open(root); !opened) {
        return opened;
    }
    if (auto parent = folder.OpenParent(relative); !parent) {
        return kelvora::Fail(parent.error());
    }
    return {};
}

constexpr std::string_view kContainerExtension = ".vexo";

// RelativeName is the part of an entry's path that is kept below a chosen folder.
std::string RelativeName(const InputEntry& entry) {
    if (entry.relativePath == kLoneFileRelativePath) {
        return entry.path.substr(entry.path.rfind('/') + 1);
    }
    return entry.relativePath.substr(entry.relativePath.find_first_not_of('/'));
}

} // namespace

std::string EachContainerPath(const InputEntry& entry, const std::string& folder) {
    const std::string base = folder.empty() ? entry.path : folder + "/" + RelativeName(entry);
    return base + std::string(kContainerExtension);
}

int EncryptEach(CliContext& context, const ParsedArgs& args, const std::vector<InputEntry>& entries,
                const std::optional<std::string>& folder) {
    ObtainedSecret secret = ObtainKey(context, args, KeyPurpose::Encrypt);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    FileJobAnswers answers = EncryptAnswers(context, args.Has(kForceName));
    answers.doneVerb = nullptr; // each container is named when it is made
    CliFileObserver observer(context, answers);
    SystemRandom random;
    int status = kExitSuccess;
    for (const InputEntry& entry : entries) {
        if (entry.path.ends_with(kContainerExtension)) {
            // A container is not wrapped in another one: that would only feed on the
            // output of an earlier run.
            Note(context, "passed over " + entry.path + ": it is a container already");
            continue;
        }
        const std::string container = EachContainerPath(entry, folder.value_or(""));
        if (auto made =
                folder ? MadeFoldersFor(*folder, RelativeName(entry)) : Result<void, Errno>();
            !made) {
            status = JobFailed(context, observer,
                               Failure(FileError::WriteFailed, 0, 0, container, made.error()));
            continue;
        }
        const EncryptRequest request{{InputEntry{entry.path, std::string(kLoneFileRelativePath)}},
                                     container,
                                     &secret.key,
                                     &random,
                                     {},
                                     {}};
        const FileJobResult result = EncryptFiles(request, observer);
        observer.ClearProgress();
        if (!result.ok()) {
            status = JobFailed(context, observer, result);
            if (result.error == FileError::Cancelled) {
                break;
            }
        } else if (context.verbose) {
            Note(context, entry.path + " -> " + container);
        }
    }
    return status;
}

} // namespace kelvora::cli
