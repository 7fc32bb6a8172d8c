#include "Base/Scheduler.h"

#include <QElapsedTimer>
#include <QTimerEvent>

#include <algorithm>
#include <cstring>
#include <utility>

namespace ChipLoom {

struct Scheduler::Task
{
    const void *owner;
    const char *name;
    qint64 due; // milliseconds of the process clock
    qint64 order;
    Work work;

    bool is(const void *otherOwner, const char *otherName) const
    {
        return owner == otherOwner && std::strcmp(name, otherName) == 0;
    }
};

namespace {

qint64 nowMs()
{
    static const QElapsedTimer clock = [] {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }();
    return clock.elapsed();
}

} // namespace

Scheduler::Scheduler(QObject *parent) : QObject(parent) {}

Scheduler::~Scheduler() = default;

void Scheduler::schedule(const void *owner, const char *name, int delayMs, Work work)
{
    cancel(owner, name);
    if (!work)
        return;
    m_tasks.push_back({owner, name, nowMs() + delayMs, m_order++, std::move(work)});
    armTimer();
}

void Scheduler::cancel(const void *owner, const char *name)
{
    std::erase_if(m_tasks, [&](const Task &task) { return task.is(owner, name); });
}

void Scheduler::cancelAll(const void *owner)
{
    std::erase_if(m_tasks, [&](const Task &task) { return task.owner == owner; });
}

bool Scheduler::isPending(const void *owner, const char *name) const
{
    return std::any_of(m_tasks.begin(), m_tasks.end(), [&](const Task &task) { return task.is(owner, name); });
}

bool Scheduler::drain(int maxRounds)
{
    if (m_holds > 0 || m_running)
        return m_tasks.empty();
    for (int round = 0; round < maxRounds && !m_tasks.empty(); ++round) {
        qint64 last = 0;
        for (const Task &task : m_tasks)
            last = std::max(last, task.due);
        runDue(last);
    }
    return m_tasks.empty();
}

void Scheduler::runDue(qint64 now)
{
    // What a task schedules waits for the next round, so that a task that reschedules itself cannot hang this one.
    const qint64 newest = m_order;
    m_running = true;
    while (m_holds == 0) {
        auto next = m_tasks.end();
        for (auto it = m_tasks.begin(); it != m_tasks.end(); ++it) {
            if (it->due > now || it->order >= newest)
                continue;
            if (next == m_tasks.end() || std::pair(it->due, it->order) < std::pair(next->due, next->order))
                next = it;
        }
        if (next == m_tasks.end())
            break;
        const Work work = std::move(next->work);
        m_tasks.erase(next);
        work();
    }
    m_running = false;
}

void Scheduler::setRealTime(bool on)
{
    m_realTime = on;
    armTimer();
}

void Scheduler::armTimer()
{
    if (m_timerId != 0)
        killTimer(std::exchange(m_timerId, 0));
    if (!m_realTime || m_tasks.empty() || m_holds > 0)
        return;
    qint64 first = m_tasks.front().due;
    for (const Task &task : m_tasks)
        first = std::min(first, task.due);
    m_timerId = startTimer(static_cast<int>(std::max<qint64>(0, first - nowMs())), Qt::PreciseTimer);
}

void Scheduler::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timerId)
        return;
    if (!m_running)
        runDue(nowMs());
    armTimer();
}

Scheduler::Hold::Hold(Scheduler &scheduler) : m_scheduler(scheduler)
{
    ++m_scheduler.m_holds;
}

Scheduler::Hold::~Hold()
{
    if (--m_scheduler.m_holds == 0)
        m_scheduler.armTimer();
}

} // namespace ChipLoom
