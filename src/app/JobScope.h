#pragma once

#include <atomic>

namespace kelvora {

class WorkingPanel;

// JobHost is the window a job runs in: it can enter and leave its busy state and owns the
// working panel that observes the job.
class JobHost {
public:
    virtual void SetWorking(bool on) = 0;
    virtual bool IsWorking() const = 0;
    virtual WorkingPanel& Working() = 0;

protected:
    ~JobHost() = default;
};

// JobScope holds its host in the busy state for its lifetime and restores it on every way out
// of a command, early returns and exceptions included. While it lives, the working panel
// observes the job and cmdCancel reaches the job (and a linked stop flag, such as a cipher's).
class JobScope {
public:
    explicit JobScope(JobHost& host);
    ~JobScope();
    JobScope(const JobScope&) = delete;
    JobScope& operator=(const JobScope&) = delete;

    WorkingPanel& Observer() { return m_host.Working(); }
    // LinkCancel lets cmdCancel also set flag, until the scope ends.
    void LinkCancel(std::atomic<bool>& flag);

private:
    JobHost& m_host;
};

} // namespace kelvora
