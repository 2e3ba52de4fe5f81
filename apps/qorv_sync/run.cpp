#include "apps/qorv_sync/run.h"

#include <cstdio>

#include "desktop/command_stream.h"
#include "desktop/connect.h"
#include "desktop/device_error.h"
#include "desktop/input_error.h"

namespace qorv_sync {

desktop::Session& Run::connect() {
  if (options_.device.empty() == options_.exec.empty()) {
    throw desktop::InputError("say which device: --device ADDRESS or --exec COMMAND");
  }
  const desktop::Seconds timeout(options_.timeoutSeconds);
  auto stream = options_.exec.empty() ? desktop::connectTo(options_.device, timeout)
                                      : desktop::startCommand(options_.exec, timeout);
  desktop::Session::Watcher watcher;
  if (options_.verbose) watcher = [this](const desktop::Exchange& exchange) { watch(exchange); };
  return session_.emplace(std::move(stream), std::move(watcher));
}

void Run::end() {
  if (session_) session_->end();
}

void Run::watch(const desktop::Exchange& exchange) {
  char line[120];
  std::snprintf(line, sizeof line, "command %d, type %d: %zu bytes out, %zu bytes in, %.3f ms",
                static_cast<int>(exchange.command), static_cast<int>(exchange.type), exchange.requestSize,
                exchange.replySize, static_cast<double>(exchange.duration.count()) / 1000);
  report.remark(line);
}

ExitStatus perform(const Options& options, const Action& action) {
  Run run(options);
  try {
    action(run);
    run.end();
  } catch (const desktop::InputError& error) {
    run.report.fail(error.what(), ExitStatus::BadInput);
  } catch (const desktop::NoDevice& error) {
    run.report.fail(error.what(), ExitStatus::NoDevice);
  } catch (const desktop::ProtocolError& error) {
    run.report.fail(std::string("the device broke the protocol: ") + error.what(),
                    ExitStatus::BrokenProtocol);
  } catch (const std::exception& error) {
    run.report.fail(error.what());
  }
  return run.report.finish();
}

}  // namespace qorv_sync
