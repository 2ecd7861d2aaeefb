#include "cli/StandardInputEncrypt.h"

#include "cli/Commands.h"
#include "cli/FileErrorText.h"
#include "cli/FileProgress.h"
#include "cli/PassphraseSource.h"
#include "cli/StreamAdapters.h"
#include "common/Random.h"
#include "files/StoredName.h"
#include "files/StreamEncrypt.h"

#include <ostream>

namespace kelvora::cli {

int EncryptStandardInput(CliContext& context, const ParsedArgs& args) {
    if (args.operands.size() != 1) {
        return Fail(context, kExitUsage, "standard input ('-') can only be encrypted alone");
    }
    const std::optional<std::string> name = args.Value(kNameOption.longName);
    const std::optional<std::string> output = args.Value(kOutputName);
    if (!name || name->empty()) {
        return Fail(context, kExitUsage, "name the file read from standard input with --name NAME");
    }
    if (!output) {
        return Fail(context, kExitUsage,
                    "name the container with -o FILE ('-' for standard output)");
    }
    if (args.Value(kPassphraseFileOption.longName) == "-") {
        return Fail(context, kExitUsage,
                    "the data and the passphrase cannot both come from standard input");
    }
    const bool replace = *output != "-" && PathExists(*output);
    if (replace && !args.Has(kForceName)) {
        return Fail(context, kExitFailure,
                    FileErrorMessage(Failure(FileError::OutputExists, 0, 0, *output)));
    }
    ObtainedSecret secret = ObtainKey(context, args, KeyPurpose::Encrypt);
    if (!secret.ok()) {
        return Fail(context, secret.status, secret.error);
    }
    CliFileObserver observer(context, EncryptAnswers(context, args.Has(kForceName)));
    SystemRandom random;
    IstreamSource source(context.in);
    const StreamEncryptRequest request{&source, StoredNameFor(*name, *name), &secret.key, &random};
    FileJobResult result;
    if (*output == "-") {
        OstreamSink out(context.out);
        result = EncryptStream(request, out, observer);
        context.out.flush();
    } else {
        TempOutputFile file;
        if (auto created = file.Create(*output); !created) {
            result = Failure(FileError::WriteFailed, 0, 0, *output, created.error());
        } else {
            result = EncryptStream(request, file, observer);
            if (auto committed = result.ok() ? file.Commit(replace) : Result<void, Errno>();
                !committed) {
                result = Failure(FileError::WriteFailed, 0, 0, *output, committed.error());
            }
        }
    }
    if (result.error == FileError::ReadFailed) {
        result.name = "standard input";
    }
    if (result.error == FileError::WriteFailed && result.name.empty()) {
        result.name = *output == "-" ? "standard output" : *output;
    }
    observer.ClearProgress();
    return result.ok() ? kExitSuccess : JobFailed(context, observer, result);
}

} // namespace kelvora::cli
