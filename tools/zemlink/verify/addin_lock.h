// Whether a program locks the records that it appends to a file.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>
#include <thread>

namespace zemlink {

// Which bytes another program was found to have locked.
struct LocksSeen {
    size_t records = 0; // that came meanwhile without a lock on the byte that is looked for
    bool atFirstByte = false, atLastByte = false; // of the record that it was about to append
    bool before = false;                          // the byte before the record, while it was locked

    bool isWholeRecord() const { return atFirstByte && atLastByte; }
};

// Tries in a thread, over and over, to lock single bytes around the end of the file, until the
// other program has been seen to lock all of a record, or `enoughRecords` have come without it. Its
// lock lasts only as long as its write, so seeing it takes many tries and usually several records.
// A byte that we hold at the wrong moment keeps the program from locking or, on Windows, from
// writing that record.
class LockWatch {
public:
    // Of a program that locks, the lock of every second record is seen, and of one in twenty when
    // six programs compete for each processor.
    static constexpr size_t enoughRecords = 1000;

    // `recordBytes`: the length of the records that are appended.
    LockWatch(const std::wstring& file, std::uint32_t recordBytes);
    ~LockWatch();
    LockWatch(const LockWatch&) = delete;
    LockWatch& operator=(const LockWatch&) = delete;

    bool isDone() const { return isDone_; }
    // Ends the thread.
    LocksSeen end();

private:
    void watch(const std::wstring& file, std::uint32_t recordBytes);

    std::atomic<bool> isDone_{false};
    LocksSeen seen_{};
    std::thread thread_; // last: it uses all others
};

} // namespace zemlink
