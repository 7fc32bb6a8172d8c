#include "Base/Beside.h"

#include <QThreadPool>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace ChipLoom {

/// Outlives its owner where the other thread comes when all is done.
struct Beside::Queue
{
    void doNext(std::unique_lock<std::mutex> &lock);
    void doAll();

    std::mutex mutex; ///< of what follows
    std::condition_variable oneDone;
    std::deque<std::function<void()>> waiting;
    int started = 0;       ///< and not yet done
    bool isCalled = false; ///< the other thread
};

void Beside::Queue::doNext(std::unique_lock<std::mutex> &lock)
{
    const std::function<void()> work = std::move(waiting.front());
    waiting.pop_front();
    ++started;
    lock.unlock();
    work();
    lock.lock();
    --started;
}

void Beside::Queue::doAll()
{
    std::unique_lock lock(mutex);
    while (!waiting.empty()) {
        doNext(lock);
        oneDone.notify_one();
    }
    isCalled = false;
}

Beside::Beside() : m_queue(std::make_shared<Queue>()) {}

void Beside::add(std::function<void()> work)
{
    const std::lock_guard lock(m_queue->mutex);
    m_queue->waiting.push_back(std::move(work));
    if (!std::exchange(m_queue->isCalled, true))
        QThreadPool::globalInstance()->start([queue = m_queue] { queue->doAll(); });
}

void Beside::finish()
{
    std::unique_lock lock(m_queue->mutex);
    while (m_queue->started > 0 || !m_queue->waiting.empty()) {
        if (m_queue->waiting.empty())
            m_queue->oneDone.wait(lock);
        else
            m_queue->doNext(lock);
    }
}

} // namespace ChipLoom
