// Conversions between the time forms, and the device's clock.
#include <gtest/gtest.h>
#include <vector>

#include "tests/emulator/device_test.h"

namespace emulator {
namespace {

SYSTEMTIME at(WORD year, WORD month, WORD day, WORD hour = 0, WORD minute = 0, WORD second = 0,
              WORD milli = 0) {
  return {year, month, 0, day, hour, minute, second, milli};
}

TEST(FileTime, countsFrom1601) {
  EXPECT_EQ(ticksOf(at(1601, 1, 1)), 0);
  // 1970-01-01 is 134774 days later: 134774 x 86400 s x 10^7.
  EXPECT_EQ(ticksOf(at(1970, 1, 1)), 116444736000000000);
  EXPECT_EQ(ticksOf(at(1601, 1, 2, 1, 2, 3, 4)),
            (((24 + 1) * 60 + 2) * 60 + 3) * kTicksPerSecond + 4 * 10000);
}

TEST(FileTime, splitsIntoTwoWords) {
  const FILETIME time = fileTimeOf(0x0123456789ABCDEF);
  EXPECT_EQ(time.dwHighDateTime, 0x01234567u);
  EXPECT_EQ(time.dwLowDateTime, 0x89ABCDEFu);
  EXPECT_EQ(ticksOf(time), 0x0123456789ABCDEF);
}

TEST(FileTime, givesTheDayOfWeekAndIgnoresTheOneThatIsGiven) {
  SYSTEMTIME monday = at(2005, 3, 14, 14, 35, 10, 250);
  monday.wDayOfWeek = 5;
  const auto back = systemTimeOf(ticksOf(monday).value());
  ASSERT_TRUE(back);
  EXPECT_EQ(back->wDayOfWeek, 1);
  EXPECT_EQ(back->wYear, 2005);
  EXPECT_EQ(back->wMonth, 3);
  EXPECT_EQ(back->wDay, 14);
  EXPECT_EQ(back->wHour, 14);
  EXPECT_EQ(back->wMinute, 35);
  EXPECT_EQ(back->wSecond, 10);
  EXPECT_EQ(back->wMilliseconds, 250);
}

TEST(FileTime, refusesDatesThatDoNotExist) {
  for (const SYSTEMTIME& time :
       {at(2005, 2, 30), at(2005, 2, 29), at(2005, 0, 1), at(2005, 13, 1), at(2005, 1, 0), at(2005, 1, 32),
        at(2005, 4, 31), at(1600, 12, 31), at(0, 1, 1), at(30828, 1, 1), at(2005, 1, 1, 24),
        at(2005, 1, 1, 0, 60), at(2005, 1, 1, 0, 0, 60), at(2005, 1, 1, 0, 0, 0, 1000)}) {
    EXPECT_EQ(ticksOf(time), std::nullopt) << time.wYear << '-' << time.wMonth << '-' << time.wDay;
  }
  EXPECT_TRUE(ticksOf(at(2004, 2, 29)));
  EXPECT_TRUE(ticksOf(at(30827, 12, 31)));
}

TEST(FileTime, withItsHighestBitSetHasNoCalendarForm) {
  EXPECT_EQ(systemTimeOf(-1), std::nullopt);
  EXPECT_TRUE(systemTimeOf(0x7FFFFFFFFFFFFFFF));
}

TEST(FileTime, comparesUnsigned) {
  const FILETIME small{0xFFFFFFFF, 0};
  const FILETIME large{0, 1};
  const FILETIME huge{0, 0x80000000};
  EXPECT_EQ(compareFileTimes(small, large), -1);
  EXPECT_EQ(compareFileTimes(large, small), 1);
  EXPECT_EQ(compareFileTimes(large, large), 0);
  EXPECT_EQ(compareFileTimes(huge, large), 1);
}

class DeviceClock : public test::DeviceTest {};

TEST_F(DeviceClock, isTheHostsPlusEverySleep) {
  EXPECT_EQ(device().clock.now(), hostNow_);
  device().clock.sleep(1500);
  EXPECT_EQ(device().clock.now(), hostNow_ + 1500 * kTicksPerMillisecond);
  hostNow_ += kTicksPerMinute;
  EXPECT_EQ(device().clock.now(), hostNow_ + 1500 * kTicksPerMillisecond);
}

TEST_F(DeviceClock, keepsItsSleepsInTheFile) {
  device().clock.sleep(250);
  reopen();
  EXPECT_EQ(device().clock.now(), hostNow_ + 250 * kTicksPerMillisecond);
}

TEST_F(DeviceClock, forgetsTheSleepsOfARolledBackUnitOfWork) {
  device().clock.sleep(250);
  device().commit();
  device().clock.sleep(1000);
  device().rollback();
  EXPECT_EQ(device().clock.now(), hostNow_ + 250 * kTicksPerMillisecond);
}

TEST_F(DeviceClock, countsMillisecondsSinceTheDeviceWasOpenedAndWraps) {
  const DWORD before = device().clock.tickCount();
  device().clock.sleep(100);
  EXPECT_EQ(device().clock.tickCount(), before + 100);
  device().clock.sleep(0xFFFFFFFF);
  EXPECT_EQ(device().clock.tickCount(), before + 99);
}

TEST_F(DeviceClock, doesWhatIsPlannedAtTheEndOfTheSleepThatReachesIt) {
  std::vector<int> done;
  device().clock.after(300, [&done] { done.push_back(300); });
  device().clock.after(150, [&done] { done.push_back(150); });
  device().clock.after(0, [&done] { done.push_back(0); });
  EXPECT_EQ(done, std::vector<int>({0}));
  device().clock.sleep(149);
  EXPECT_EQ(done, std::vector<int>({0}));
  device().clock.sleep(200);
  EXPECT_EQ(done, std::vector<int>({0, 150, 300}));
}

TEST_F(DeviceClock, waitsInRealTimeAndThenStandsWhereTheHostsDoes) {
  Clock clock(device().store.settings(), hostTime, Clock::Pace::RealTime);
  const Ticks before = hostTime();
  clock.sleep(20);
  const Ticks now = clock.now();
  EXPECT_GE(now - before, 20 * kTicksPerMillisecond);
  EXPECT_LE(now, hostTime());
  EXPECT_EQ(device().store.settings().get<Ticks>("clock_offset"), std::nullopt);
}

}  // namespace
}  // namespace emulator
