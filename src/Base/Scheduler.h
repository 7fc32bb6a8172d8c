#pragma once

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace ChipLoom {

/// The one clock for deferred work: debounced values, flags that become signals, queued refreshes.
///
/// A task is keyed: scheduling a key again restarts its delay and replaces its work, which is what debouncing means.
/// The window lets real time pass (`setRealTime(true)`, needs an event loop); the command line and tests call `drain`.
/// While at least one `Hold` lives nothing runs; what falls due meanwhile runs when the last hold goes, in order of
/// due time and then of scheduling.
class Scheduler : public QObject
{
public:
    using Work = std::function<void()>;

    explicit Scheduler(QObject *parent = nullptr);
    ~Scheduler() override;

    /// Runs `work` once, `delayMs` milliseconds from now. `owner` and `name` together are the key; `owner` is only
    /// compared. A null `work` cancels.
    void schedule(const void *owner, const char *name, int delayMs, Work work);
    /// Forgets one task, or all tasks of an owner that is about to go.
    void cancel(const void *owner, const char *name);
    void cancelAll(const void *owner);

    bool isPending(const void *owner, const char *name) const;
    bool isIdle() const { return m_tasks.empty(); }

    /// Runs all that is pending, at once, and what that schedules in turn, for at most `maxRounds` rounds.
    /// Returns false if work was still pending then, or if a hold stands: the caller has found a loop.
    bool drain(int maxRounds = 100);

    /// Whether timers of the event loop run due tasks. Off at first.
    void setRealTime(bool on);

    class Hold
    {
    public:
        explicit Hold(Scheduler &scheduler);
        ~Hold();
        Hold(const Hold &) = delete;
        Hold &operator=(const Hold &) = delete;

    private:
        Scheduler &m_scheduler;
    };

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Task;
    void runDue(qint64 now);
    void armTimer();

    std::vector<Task> m_tasks;
    qint64 m_order = 0;
    int m_holds = 0;
    int m_timerId = 0;
    bool m_realTime = false;
    bool m_running = false;
};

} // namespace ChipLoom
