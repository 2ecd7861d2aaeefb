#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace kelvora {

// OrderedWorkers runs one piece of work per submitted item on worker threads and hands the
// items back in the order they went in, so a caller can keep several in flight and still
// write results in sequence. With no workers the caller's thread does the work when it asks
// for the item. Items not taken when it is destroyed are dropped (after the work running on
// them ends).
template <typename Item> class OrderedWorkers {
public:
    using Work = std::function<void(Item&)>;

    OrderedWorkers(std::size_t workers, Work work) : m_work(std::move(work)) {
        for (std::size_t i = 0; i < workers; ++i) {
            m_threads.emplace_back([this] { WorkerLoop(); });
        }
    }

    ~OrderedWorkers() {
        {
            std::lock_guard lock(m_mutex);
            m_stopping = true;
        }
        m_pending.notify_all();
        for (std::thread& thread : m_threads) {
            thread.join();
        }
    }

    OrderedWorkers(const OrderedWorkers&) = delete;
    OrderedWorkers& operator=(const OrderedWorkers&) = delete;

    void Submit(Item item) {
        {
            std::lock_guard lock(m_mutex);
            m_slots.push_back(Slot{m_submitted++, std::move(item), false, false});
        }
        m_pending.notify_one();
    }

    // Next waits for the oldest item not taken yet; there must be one.
    [[nodiscard]] Item Next() {
        std::optional<Item> item;
        while (!(item = NextWithin(std::chrono::hours(1)))) {
        }
        return std::move(*item);
    }

    // NextWithin is Next that gives up after timeout, so the caller can do other things
    // (let events run, poll a cancel request) while it waits.
    [[nodiscard]] std::optional<Item> NextWithin(std::chrono::milliseconds timeout) {
        std::unique_lock lock(m_mutex);
        Slot& oldest = m_slots.front();
        if (m_threads.empty() && !oldest.started) {
            oldest.started = true;
            m_work(oldest.item);
            oldest.done = true;
        }
        if (!m_finished.wait_for(lock, timeout, [&] { return m_slots.front().done; })) {
            return std::nullopt;
        }
        Item item = std::move(m_slots.front().item);
        m_slots.pop_front();
        ++m_taken;
        return item;
    }

    std::size_t InFlight() const { return static_cast<std::size_t>(m_submitted - m_taken); }
    std::size_t WorkerCount() const { return m_threads.size(); }

private:
    struct Slot {
        std::uint64_t sequence = 0;
        Item item;
        bool started = false;
        bool done = false;
    };

    void WorkerLoop() {
        std::unique_lock lock(m_mutex);
        while (true) {
            m_pending.wait(lock, [&] { return m_stopping || FirstUnstarted() != m_slots.end(); });
            if (m_stopping) {
                return;
            }
            const auto slot = FirstUnstarted();
            slot->started = true;
            Item item = std::move(slot->item);
            const std::uint64_t sequence = slot->sequence;
            lock.unlock();
            m_work(item);
            lock.lock();
            // Slots only leave from the front once done, so this one is still queued.
            const auto mine = std::find_if(m_slots.begin(), m_slots.end(),
                                           [&](const Slot& s) { return s.sequence == sequence; });
            mine->item = std::move(item);
            mine->done = true;
            m_finished.notify_all();
        }
    }

    typename std::deque<Slot>::iterator FirstUnstarted() {
        return std::find_if(m_slots.begin(), m_slots.end(),
                            [](const Slot& slot) { return !slot.started; });
    }

    Work m_work;
    std::vector<std::thread> m_threads;
    std::mutex m_mutex;
    std::condition_variable m_pending;
    std::condition_variable m_finished;
    std::deque<Slot> m_slots;
    std::uint64_t m_submitted = 0;
    std::uint64_t m_taken = 0;
    bool m_stopping = false;
};

} // namespace kelvora
