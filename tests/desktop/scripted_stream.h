// A device that expects given requests and gives given replies, a few bytes at a time.
#pragma once

#include <algorithm>
#include <deque>
#include <gtest/gtest.h>
#include <memory>

#include "desktop/session.h"
#include "desktop/stream.h"
#include "tests/desktop/wire_bytes.h"

/// What the device was asked, and what it is to answer; shared with the stream, which the session owns.
struct Script {
  struct Step {
    wire_bytes::Bytes request;  ///< payload, without its length word
    wire_bytes::Bytes reply;    ///< the bytes of the stream
  };

  std::deque<Step> steps;
  std::size_t piece = SIZE_MAX;  ///< the most bytes that one read gives
  int writes = 0;
  bool finished = false;

  void expect(const wire_bytes::Bytes& request, const wire_bytes::Bytes& reply) {
    using wire_bytes::operator+;
    steps.push_back({request, wire_bytes::u32(static_cast<std::uint32_t>(reply.size())) + reply});
  }
  /// A reply as the stream has it, length word and all, or less than that.
  void expectRaw(const wire_bytes::Bytes& request, const wire_bytes::Bytes& stream) {
    steps.push_back({request, stream});
  }
  void expectEnd() { expect(wire_bytes::hex("01 02"), {}); }
};

class ScriptedStream : public desktop::Stream {
 public:
  explicit ScriptedStream(std::shared_ptr<Script> script) : script_(std::move(script)) {}

  void write(desktop::BytesView bytes) override {
    using wire_bytes::operator+;
    ++script_->writes;
    ASSERT_FALSE(script_->steps.empty()) << "one request too many";
    const Script::Step step = script_->steps.front();
    script_->steps.pop_front();
    const auto length = static_cast<std::uint32_t>(step.request.size());
    EXPECT_EQ(wire_bytes::Bytes(bytes.begin(), bytes.end()), wire_bytes::u32(length) + step.request);
    pending_.insert(pending_.end(), step.reply.begin(), step.reply.end());
  }

  std::size_t read(std::span<std::uint8_t> room) override {
    const std::size_t count = std::min({room.size(), pending_.size(), script_->piece});
    std::copy_n(pending_.begin(), count, room.begin());
    pending_.erase(pending_.begin(), pending_.begin() + static_cast<std::ptrdiff_t>(count));
    return count;
  }

  void finish() override { script_->finished = true; }
  std::string endReason() override { return "the script came to its end"; }

 private:
  std::shared_ptr<Script> script_;
  std::deque<std::uint8_t> pending_;
};

/// A session with a script; every step must have been taken at the end.
class ScriptedSession : public testing::Test {
 protected:
  ~ScriptedSession() override { EXPECT_TRUE(script->steps.empty()) << "not all requests were made"; }

  /// Ended at the tear-down, so that a test says only what it is about.
  desktop::Session& session() {
    if (!session_) session_ = std::make_unique<desktop::Session>(std::make_unique<ScriptedStream>(script));
    return *session_;
  }
  void TearDown() override {
    if (!session_) return;
    script->expectEnd();
    session_.reset();
  }
  /// For a session that is out of step and so can't be ended.
  void dropSession() { session_.reset(); }

  std::shared_ptr<Script> script = std::make_shared<Script>();

 private:
  std::unique_ptr<desktop::Session> session_;
};
