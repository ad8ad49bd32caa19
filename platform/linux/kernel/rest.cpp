#include "platform/linux/kernel/rest.h"

#include <atomic>

namespace cardsong::kernel {
namespace {

std::atomic<const RestHooks*> g_hooks = nullptr;

} // namespace

void InstallRestHooks(const RestHooks& hooks)
{
    g_hooks.store(&hooks, std::memory_order_release);
}

Rest::Rest() : m_hooks(g_hooks.load(std::memory_order_acquire))
{
    if (m_hooks != nullptr)
        m_hooks->begin();
}

Rest::~Rest()
{
    if (m_hooks != nullptr)
        m_hooks->end();
}

} // namespace cardsong::kernel
