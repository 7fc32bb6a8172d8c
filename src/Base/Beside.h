#pragma once

#include <functional>
#include <memory>

namespace ChipLoom {

/// Work that goes on in another thread beside what its owner does. Pieces are begun in the order in which they were
/// added, but a large one before those that wait, by the other thread and, once the owner waits for them, by both: they
/// must not need each other. Where no other thread is free the owner does them all. Copies stand for the same work.
class Beside
{
public:
    Beside();
    ~Beside() { finish(); }
    Beside(const Beside &) = default;
    Beside &operator=(const Beside &) = default;

    struct Piece;
    /// What the work touches is left alone until it is finished.
    std::shared_ptr<const Piece> add(std::function<void()> work, bool isLarge = false);
    /// Comes back when the piece is done.
    void finish(const std::shared_ptr<const Piece> &piece);
    /// When all that was added is done.
    void finish();

private:
    struct Queue;

    std::shared_ptr<Queue> m_queue;
};

} // namespace ChipLoom
