// Handles: opaque, checked by kind, and never valid again once closed.
#include <gtest/gtest.h>
#include <memory>

#include "emulator/system/handle_table.h"
#include "platform/registry.h"

namespace emulator {
namespace {

class Apple : public ClosableObject {
 public:
  explicit Apple(int* destroyed = nullptr) : destroyed_(destroyed) {}
  ~Apple() override {
    if (destroyed_ != nullptr) ++*destroyed_;
  }

 private:
  int* destroyed_;
};
class Pear : public KernelObject {};

TEST(Handles, leadToTheirObject) {
  HandleTable table;
  auto apple = std::make_unique<Apple>();
  const Apple* expected = apple.get();
  const auto handle = table.add<HANDLE>(std::move(apple));
  EXPECT_NE(handle, nullptr);
  EXPECT_EQ(table.find<Apple>(handle), expected);
}

TEST(Handles, ofAnotherKindAreNotTaken) {
  HandleTable table;
  const auto pear = table.add<HKEY>(std::make_unique<Pear>());
  EXPECT_EQ(table.find<Apple>(pear), nullptr);
  EXPECT_FALSE(table.close<Apple>(pear));
  EXPECT_FALSE(table.close<ClosableObject>(pear));
  EXPECT_TRUE(table.close<Pear>(pear));
}

TEST(Handles, thatWereNeverGivenOutAreNotTaken) {
  HandleTable table;
  EXPECT_EQ(table.find<KernelObject>(HANDLE{nullptr}), nullptr);
  EXPECT_EQ(table.find<KernelObject>(INVALID_HANDLE_VALUE), nullptr);
  EXPECT_FALSE(table.close<KernelObject>(INVALID_HANDLE_VALUE));
}

TEST(Handles, areClosedOnceAndDestroyTheirObject) {
  HandleTable table;
  int destroyed = 0;
  const auto handle = table.add<HANDLE>(std::make_unique<Apple>(&destroyed));
  EXPECT_TRUE(table.close<ClosableObject>(handle));
  EXPECT_EQ(destroyed, 1);
  EXPECT_FALSE(table.close<ClosableObject>(handle));
  EXPECT_EQ(destroyed, 1);
}

TEST(Handles, areNotGivenOutTwice) {
  HandleTable table;
  const auto first = table.add<HANDLE>(std::make_unique<Apple>());
  table.close<Apple>(first);
  EXPECT_NE(table.add<HANDLE>(std::make_unique<Apple>()), first);
  EXPECT_EQ(table.find<Apple>(first), nullptr);
}

TEST(Handles, areCountedByKind) {
  HandleTable table;
  table.add<HANDLE>(std::make_unique<Apple>());
  table.add<HANDLE>(std::make_unique<Apple>());
  const auto pear = table.add<HANDLE>(std::make_unique<Pear>());
  EXPECT_EQ(table.count<Apple>(), 2u);
  EXPECT_EQ(table.count<KernelObject>(), 3u);
  table.close<Pear>(pear);
  EXPECT_EQ(table.count<Pear>(), 0u);
}

}  // namespace
}  // namespace emulator
