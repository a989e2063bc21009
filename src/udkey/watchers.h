// Who is told of changes of the keys.
#pragma once

namespace toolbox::udkey {

/// Tells every watcher unless `done` is 0, and returns that. The last act of an operation: a
/// watcher may delete the manager.
int told(int done);

}  // namespace toolbox::udkey
