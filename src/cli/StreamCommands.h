#pragma once

#include "cli/CliArgs.h"
#include "cli/CliOutput.h"
#include "common/Bytes.h"
#include "files/FileJobObserver.h"

#include <string>

namespace kelvora::cli {

// The reading commands over a container read front to back without its index: from a pipe
// ("-"), for salvage (--keep-going), or to write a single file to standard output.

// WalkRequest is what a walking command reads and how.
struct WalkRequest {
    std::string container;         // "-" for standard input
    std::string folder;            // decrypt: where files go
    bool toStandardOutput = false; // decrypt -o -: the single file to standard output
    bool keepGoing = false;
    bool keepPartial = false;
    bool json = false;
    ExistingFileAnswer existingFile = ExistingFileAnswer::Cancel;
};

// WalkDecrypt restores the files of a container walked record by record.
int WalkDecrypt(CliContext& context, const WalkRequest& request, const SecretBytes& key);
// WalkList and WalkTest are list and test over a container walked record by record.
int WalkList(CliContext& context, const WalkRequest& request, const SecretBytes& key);
int WalkTest(CliContext& context, const WalkRequest& request, const SecretBytes& key);

} // namespace kelvora::cli
