#include "cli/StreamCommands.h"

#include "cli/FileErrorText.h"
#include "cli/FileProgress.h"
#include "cli/JsonReport.h"
#include "cli/StreamAdapters.h"
#include "files/WalkHandlers.h"

#include <cerrno>
#include <fstream>
#include <memory>
#include <ostream>

namespace kelvora::cli {
namespace {

// OpenedInput is the container as a stream: standard input, or the file opened.
struct OpenedInput {
    std::unique_ptr<std::ifstream> file;
    std::unique_ptr<IstreamSource> source;
    std::int64_t size = 0;
};

bool OpenInput(CliContext& context, const std::string& container, OpenedInput& opened) {
    if (container == "-") {
        opened.source = std::make_unique<IstreamSource>(context.in);
        return true;
    }
    opened.file = std::make_unique<std::ifstream>(container, std::ios::binary | std::ios::ate);
    if (!*opened.file) {
        return false;
    }
    opened.size = static_cast<std::int64_t>(opened.file->tellg());
    opened.file->seekg(0);
    opened.source = std::make_unique<IstreamSource>(*opened.file);
    return true;
}

std::string ShownContainer(const std::string& container) {
    return container == "-" ? "standard input" : container;
}

// WalkFailed reports what stopped a walk; the container stands for an unnamed read failure.
int WalkFailed(CliContext& context, CliFileObserver& observer, FileJobResult result,
               const WalkRequest& request) {
    const bool aboutTheContainer =
        result.error == FileError::ReadFailed || result.error == FileError::NoUsableContent;
    if (aboutTheContainer && result.name.empty()) {
        result.name = ShownContainer(request.container);
    }
    return JobFailed(context, observer, result, request.json);
}

// IndexProblem says what is wrong with the index behind the records, or nothing.
std::string IndexProblem(const WalkOutcome& outcome) {
    switch (outcome.index) {
    case IndexCheck::Matches:
        return {};
    case IndexCheck::Differs:
        return "the index at the end does not match the records read (" +
               std::to_string(outcome.files) + " files read, " +
               std::to_string(outcome.indexFiles) + " in the index)";
    case IndexCheck::Missing:
        return "the index at the end is missing or damaged: files may be missing after the "
               "last one read";
    }
    return {};
}

// WalkRun is how a walk over a container ended, and whether the container opened at all.
struct WalkRun {
    WalkOutcome outcome;
    bool opened = true;
};

WalkRun RunWalk(CliContext& context, const WalkRequest& request, const SecretBytes& key,
                RecordWalkHandler& handler, FileJobObserver& observer) {
    OpenedInput input;
    if (!OpenInput(context, request.container, input)) {
        WalkRun failed{WalkOutcome{Failure(FileError::ReadFailed, 0, 0, request.container, errno)},
                       false};
        return failed;
    }
    observer.OnJobStarted(0, input.size);
    return WalkRun{WalkRecords(*input.source, key, handler, observer, request.keepGoing), true};
}

} // namespace

int WalkDecrypt(CliContext& context, const WalkRequest& request, const SecretBytes& key) {
    FileJobAnswers answers;
    answers.quiet = context.quiet;
    answers.listRestored = !request.toStandardOutput;
    answers.existingFile = request.existingFile;
    CliFileObserver observer(context, answers);
    if (request.toStandardOutput) {
        OstreamSink out(context.out);
        WalkLister single(out, observer, true);
        const WalkRun walked = RunWalk(context, request, key, single, observer);
        context.out.flush();
        if (single.MoreThanOneFile()) {
            return Fail(context, kExitFailure,
                        "the container holds more than one file; only a single file can go to "
                        "standard output (restore them with -C DIR)");
        }
        if (!walked.outcome.result.ok()) {
            return WalkFailed(context, observer, walked.outcome.result, request);
        }
        const std::string problem = IndexProblem(walked.outcome);
        return problem.empty() ? kExitSuccess : Fail(context, kExitFailure, problem);
    }
    WalkRestorer restorer(request.folder, observer, request.keepPartial);
    // A file can be read twice: a first walk finds every name, so that every conflict is
    // settled before anything is written. A pipe is read once, so each conflict is settled
    // as its file comes.
    if (request.container != "-") {
        WalkNames names;
        CancelOnly planning(observer);
        const WalkRun named = RunWalk(context, request, key, names, planning);
        if (!named.outcome.result.ok()) {
            return WalkFailed(context, observer, named.outcome.result, request);
        }
        if (FileJobResult planned = restorer.PlanTargets(names.Names()); !planned.ok()) {
            return Fail(context, kExitFailure, ExistsAlready(planned.name, kExistingFileOptions));
        }
    }
    const WalkRun walked = RunWalk(context, request, key, restorer, observer);
    observer.ClearProgress();
    for (const DamagedFile& damaged : restorer.Damaged()) {
        Fail(context, kExitFailure,
             damaged.name + ": chunk " + std::to_string(damaged.chunk) +
                 " is damaged, not restored" +
                 (damaged.partialPath.empty()
                      ? std::string()
                      : "; its intact leading chunks are in " + damaged.partialPath));
    }
    // The restorer ends the walk naming the file when one exists already and no option
    // says what to do with it.
    if (const FileJobResult& result = walked.outcome.result;
        result.error == FileError::Cancelled && !result.name.empty()) {
        return Fail(context, kExitFailure, ExistsAlready(result.name, kExistingFileOptions));
    }
    if (!walked.outcome.result.ok()) {
        return WalkFailed(context, observer, walked.outcome.result, request);
    }
    if (walked.outcome.skippedBytes > 0) {
        Note(context, std::to_string(walked.outcome.skippedBytes) +
                          " bytes belong to no readable record and were passed over");
    }
    bool failed = !restorer.Damaged().empty() || restorer.Refused();
    if (const std::string problem = IndexProblem(walked.outcome); !problem.empty()) {
        failed = Fail(context, kExitFailure, problem) != kExitSuccess;
    }
    if (restorer.Refused()) {
        Fail(context, kExitFailure, LeftOutSummary(observer.RefusedCount()));
    }
    return failed ? kExitFailure : kExitSuccess;
}

namespace {

int WalkListOrTest(CliContext& context, const WalkRequest& request, const SecretBytes& key,
                   bool test) {
    std::vector<std::string> checked;
    FileJobAnswers answers;
    answers.quiet = context.quiet;
    answers.doneVerb = test && context.verbose ? "checked" : nullptr;
    answers.doneNames = &checked;
    CliFileObserver observer(context, answers);
    NullSink nowhere;
    WalkLister lister(nowhere, observer, false);
    WalkRequest strict = request;
    strict.keepGoing = false;
    const WalkRun walked = RunWalk(context, strict, key, lister, observer);
    if (!walked.outcome.result.ok()) {
        return WalkFailed(context, observer, walked.outcome.result, request);
    }
    observer.ClearProgress();
    if (const std::string problem = IndexProblem(walked.outcome); !problem.empty()) {
        if (request.json) {
            context.out << "{\"ok\":false,\"error\":" << JsonString(problem) << "}\n";
        }
        return Fail(context, kExitFailure, problem);
    }
    if (test) {
        context.out << (request.json ? TestJson(checked) : "OK\n");
    } else if (request.json) {
        context.out << ListJson(lister.Entries());
    } else {
        for (const ContainerEntry& entry : lister.Entries()) {
            context.out << entry.plainBytes << '\t' << entry.name << '\n';
        }
    }
    return kExitSuccess;
}

} // namespace

int WalkList(CliContext& context, const WalkRequest& request, const SecretBytes& key) {
    return WalkListOrTest(context, request, key, false);
}

int WalkTest(CliContext& context, const WalkRequest& request, const SecretBytes& key) {
    return WalkListOrTest(context, request, key, true);
}

} // namespace kelvora::cli
