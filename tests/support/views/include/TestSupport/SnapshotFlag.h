// Sets the process-wide snapshot flag for one test and puts the earlier value
// back afterwards, so tests of live and static forms can share a process.
#pragma once

#include "OrvikKit/Snapshot.h"

namespace testsupport {

class ScopedSnapshotFlag {
public:
    explicit ScopedSnapshotFlag(bool active) : previous_(orvik::Snapshot::isActive()) {
        orvik::Snapshot::setIsActive(active);
    }
    ~ScopedSnapshotFlag() { orvik::Snapshot::setIsActive(previous_); }

    ScopedSnapshotFlag(const ScopedSnapshotFlag&) = delete;
    ScopedSnapshotFlag& operator=(const ScopedSnapshotFlag&) = delete;

private:
    bool previous_;
};

}  // namespace testsupport
