#pragma once

#include "common/Result.h"
#include "files/ContainerIndex.h"
#include "files/FileError.h"
#include "files/FileJobObserver.h"
#include "files/OutputFolder.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace kelvora {

class ContainerSession;

// PlannedFile is what a restore run will do with one file of the container.
struct PlannedFile {
    enum class Action { Write, Skip, LeaveOut };
    FileRange range;
    std::string shown;     // the stored name as shown to a person
    std::string relative;  // the path below the output folder ("/" between folders)
    std::string elsewhere; // a path outside the folder the person chose instead, if any
    Action action = Action::Write;
    bool replace = false;
    FileError why = FileError::None; // for LeaveOut
    int systemError = 0;
};

// RestorePlan settles every file's target before anything is written: names that cannot be
// restored safely are left out, and every conflict (a file that exists already, or two files
// of the container with the same name) is put to the observer. Only when no answer was
// Cancel does the run write anything.
struct RestorePlan {
    std::vector<PlannedFile> files;
    // Set when an answer was Cancel; conflicts names every file that exists already.
    bool cancelled = false;
    std::vector<std::string> conflicts;
};

// PlanRestore walks the container once and plans every file; a damaged first record (or an
// index that can no longer be read) ends planning with that failure.
[[nodiscard]] Result<RestorePlan, FileJobResult> PlanRestore(ContainerSession& session,
                                                             const OutputFolder& folder,
                                                             const std::string& root,
                                                             FileJobObserver& observer);

// NumberedName gives "name (n).ext" for a path's file name ("a/b.txt", 2 -> "a/b (2).txt").
[[nodiscard]] std::string NumberedName(const std::string& relative, int n);

} // namespace kelvora
