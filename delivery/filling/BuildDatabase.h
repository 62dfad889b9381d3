#pragma once

#include <QString>

namespace orv::delivery {

// Makes the delivered database at `path` from the content folder. It is made under another
// name beside it, checked, and then takes its place; after a failure nothing is left behind.
// `digests` is a file that tells, if wanted, which stored picture is of which drawing script. RuntimeError or
// std::runtime_error.
void BuildDatabase(const QString& path, const QString& content_folder, const QString& digests = {});

}  // namespace orv::delivery
