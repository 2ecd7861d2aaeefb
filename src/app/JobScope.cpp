#include "app/JobScope.h"

#include "app/WorkingPanel.h"

namespace kelvora {

JobScope::JobScope(JobHost& host) : m_host(host) {
    m_host.SetWorking(true);
}

JobScope::~JobScope() {
    m_host.Working().LinkCancel(nullptr);
    m_host.SetWorking(false);
}

void JobScope::LinkCancel(std::atomic<bool>& flag) {
    m_host.Working().LinkCancel(&flag);
}

} // namespace kelvora
