// The library's static objects: made on attach, ended on detach.
#pragma once

namespace device {

void makeStaticObjects();
/// Ends them in reverse order; the library may be attached again afterwards.
void endStaticObjects();

}  // namespace device
