#include "pim/task.h"

#include "channel/host_context.h"

namespace qorv {

CCETask::CCETask() : CQorvApiBase({olFolderTasks, DataType::Task, &hostContext().taskLog}) {}

}  // namespace qorv
