#include "OrvikKit/ScopedRef.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace orvik {
namespace {

// A reference-counted object as the platform keeps it: the count starts at 1
// for whoever created it.
struct Counted {
    int count = 1;
};

// Counts retains and releases, so each test can check who owns what.
struct CountingPolicy {
    static inline int retains = 0;
    static inline int releases = 0;
    static void retain(Counted* object) noexcept {
        ++retains;
        ++object->count;
    }
    static void release(Counted* object) noexcept {
        ++releases;
        --object->count;
    }
};

using Ref = ScopedRef<Counted*, CountingPolicy>;

class ScopedRefTest : public testing::Test {
protected:
    void SetUp() override {
        CountingPolicy::retains = 0;
        CountingPolicy::releases = 0;
    }
};

TEST_F(ScopedRefTest, AdoptTakesOverTheCreatorsReferenceWithoutRetaining) {
    Counted created;  // as returned by a Create or Copy function
    {
        const Ref ref = Ref::adopt(&created);
        EXPECT_EQ(ref.get(), &created);
        EXPECT_EQ(CountingPolicy::retains, 0);
        EXPECT_EQ(created.count, 1);
    }
    EXPECT_EQ(CountingPolicy::releases, 1);
    EXPECT_EQ(created.count, 0);
}

TEST_F(ScopedRefTest, RetainTakesABorrowedReferenceAndGivesItBack) {
    Counted borrowed;  // owned by someone else (a Get function's result)
    {
        const Ref ref = Ref::retain(&borrowed);
        EXPECT_EQ(CountingPolicy::retains, 1);
        EXPECT_EQ(borrowed.count, 2);
    }
    EXPECT_EQ(CountingPolicy::releases, 1);
    EXPECT_EQ(borrowed.count, 1);  // the owner's reference is untouched
}

TEST_F(ScopedRefTest, NullIsNeverRetainedOrReleased) {
    {
        const Ref adopted = Ref::adopt(nullptr);
        const Ref retained = Ref::retain(nullptr);
        const Ref empty;
        const Ref copy = retained;  // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_FALSE(adopted);
        EXPECT_FALSE(retained);
        EXPECT_FALSE(empty);
        EXPECT_FALSE(copy);
    }
    EXPECT_EQ(CountingPolicy::retains, 0);
    EXPECT_EQ(CountingPolicy::releases, 0);
}

TEST_F(ScopedRefTest, ACopyOwnsAReferenceOfItsOwn) {
    Counted created;
    {
        const Ref first = Ref::adopt(&created);
        {
            const Ref second = first;  // NOLINT(performance-unnecessary-copy-initialization)
            EXPECT_EQ(second.get(), &created);
            EXPECT_EQ(created.count, 2);
        }
        EXPECT_EQ(created.count, 1);
    }
    EXPECT_EQ(created.count, 0);
    EXPECT_EQ(CountingPolicy::retains, 1);
    EXPECT_EQ(CountingPolicy::releases, 2);
}

TEST_F(ScopedRefTest, AMoveHandsTheReferenceOverWithoutCounting) {
    Counted created;
    Ref source = Ref::adopt(&created);
    const Ref target = std::move(source);
    EXPECT_EQ(target.get(), &created);
    EXPECT_FALSE(source);  // NOLINT(bugprone-use-after-move): moved-from is empty by contract
    EXPECT_EQ(CountingPolicy::retains, 0);
    EXPECT_EQ(CountingPolicy::releases, 0);
    EXPECT_EQ(created.count, 1);
}

TEST_F(ScopedRefTest, AssignmentReleasesTheOldObjectAndOwnsTheNew) {
    Counted first;
    Counted second;
    Ref ref = Ref::adopt(&first);
    const Ref other = Ref::adopt(&second);
    ref = other;
    EXPECT_EQ(first.count, 0);
    EXPECT_EQ(second.count, 2);
    ref = Ref::adopt(nullptr);
    EXPECT_EQ(second.count, 1);
    EXPECT_FALSE(ref);
}

TEST_F(ScopedRefTest, SelfAssignmentKeepsTheObject) {
    Counted created;
    Ref ref = Ref::adopt(&created);
    Ref& alias = ref;
    ref = alias;
    EXPECT_EQ(ref.get(), &created);
    EXPECT_EQ(created.count, 1);
}

TEST_F(ScopedRefTest, ResetReleasesOnceAndEmpties) {
    Counted created;
    Ref ref = Ref::adopt(&created);
    ref.reset();
    ref.reset();
    EXPECT_FALSE(ref);
    EXPECT_EQ(CountingPolicy::releases, 1);
    EXPECT_EQ(created.count, 0);
}

TEST_F(ScopedRefTest, RelinquishHandsTheReferenceToTheCaller) {
    Counted created;
    Counted* owned = nullptr;
    {
        Ref ref = Ref::adopt(&created);
        owned = ref.relinquish();
        EXPECT_FALSE(ref);
    }
    EXPECT_EQ(owned, &created);
    EXPECT_EQ(CountingPolicy::releases, 0);
    EXPECT_EQ(created.count, 1);  // now the caller's to release
}

}  // namespace
}  // namespace orvik
