#include "Base/Beside.h"

#include <QThreadPool>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

namespace ChipLoom {

struct Beside::Piece
{
    std::function<void()> work;
    bool isDone = false;
};

/// Outlives its owner where the other thread comes when all is done.
struct Beside::Queue
{
    void doNext(std::unique_lock<std::mutex> &lock);
    void doAll();
    template <typename Goal> void finish(Goal isReached);

    std::mutex mutex; ///< of what follows
    std::condition_variable oneDone;
    std::deque<std::shared_ptr<Piece>> waiting;
    int started = 0;       ///< and not yet done
    bool isCalled = false; ///< the other thread
};

void Beside::Queue::doNext(std::unique_lock<std::mutex> &lock)
{
    const std::shared_ptr<Piece> piece = std::move(waiting.front());
    waiting.pop_front();
    ++started;
    lock.unlock();
    piece->work();
    lock.lock();
    piece->isDone = true;
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

template <typename Goal> void Beside::Queue::finish(Goal isReached)
{
    std::unique_lock lock(mutex);
    while (!isReached()) {
        if (waiting.empty())
            oneDone.wait(lock);
        else
            doNext(lock);
    }
}

Beside::Beside() : m_queue(std::make_shared<Queue>()) {}

std::shared_ptr<const Beside::Piece> Beside::add(std::function<void()> work, bool isLarge)
{
    const auto piece = std::make_shared<Piece>(Piece{std::move(work)});
    const std::lock_guard lock(m_queue->mutex);
    m_queue->waiting.insert(isLarge ? m_queue->waiting.begin() : m_queue->waiting.end(), piece);
    if (!std::exchange(m_queue->isCalled, true))
        QThreadPool::globalInstance()->start([queue = m_queue] { queue->doAll(); });
    return piece;
}

void Beside::finish(const std::shared_ptr<const Piece> &piece)
{
    m_queue->finish([&] { return piece->isDone; });
}

void Beside::finish()
{
    m_queue->finish([this] { return m_queue->started == 0 && m_queue->waiting.empty(); });
}

} // namespace ChipLoom
