#pragma once

#include "files/ContainerSession.h"
#include "files/FileError.h"
#include "files/FileJobObserver.h"

#include <functional>
#include <string>

namespace kelvora {

// Target is where a restored file goes when its path is taken already.
enum class Target { Write, Skip, Cancel };

// TargetChoice is the settled answer about one path: what to do, the path to write (another
// name, perhaps) and whether an existing file there is to be replaced.
struct TargetChoice {
    Target target = Target::Write;
    std::string path;
    bool replace = false;
};

// PathTaken tells whether a path is taken already; unset means "something is there".
using PathTaken = std::function<bool(const std::string&)>;

// ChooseTarget asks the observer about a taken path until the answer settles it.
[[nodiscard]] TargetChoice ChooseTarget(std::string path, FileJobObserver& observer,
                                        const PathTaken& taken = {});

// DecryptContainer restores every file of the container below the output folder, creating
// its folders. The passphrase is checked first, so a wrong one writes nothing. A stored name
// that would leave the folder is refused (OnFileRefused) and nothing is written for it; the
// run goes on and ends with UnsafeName. Files with a byte count of 0 are skipped. An
// existing file is handled as the observer answers. Each file is written under a temporary
// name in its folder and appears under its own name only when complete. Other errors end
// the run; files restored before stay.
[[nodiscard]] FileJobResult DecryptContainer(const DecryptRequest& request,
                                             FileJobObserver& observer,
                                             DecodeWorkers workers = std::nullopt);

} // namespace kelvora
