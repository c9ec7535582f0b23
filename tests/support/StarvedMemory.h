#pragma once

#include <cstddef>
#include <cstdint>

/// Lets memory run out: while it lives, one request of this thread for more than some bytes fails,
/// whether it comes from malloc, calloc, realloc or operator new, and in whatever library. To try
/// all of them, count up until none fails:
///
///     bool failed = true;
///     for (int which = 1; failed; ++which) {
///         ... what has to be there before
///         {
///             const StarvedMemory starved(1000, which);
///             ... what is to be tested
///             failed = starved.hasFailed();
///         }
///         ... what must hold in spite of it
///     }
///
/// One at a time in a program. Under a sanitizer, which serves the requests itself, none fails; on
/// Windows none of a library that is loaded later than isPossible() was asked.
class StarvedMemory
{
public:
    /// Whether requests can fail in this program. To be asked before the first is to fail.
    static bool isPossible();

    /// Of the requests for more than @p size bytes the one with the number @p which, from 1, fails.
    StarvedMemory(std::size_t size, int which);
    ~StarvedMemory();
    StarvedMemory(const StarvedMemory&) = delete;
    StarvedMemory& operator=(const StarvedMemory&) = delete;

    /// Whether there have been so many requests, and one has failed.
    bool hasFailed() const;
};

// For the functions that serve the requests.

/// Whether this request fails.
bool isStarved(std::size_t size);
/// The system's number of the calling thread, found without any request.
std::uintptr_t thisThread();
