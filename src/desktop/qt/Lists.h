// The entries of lists.
#pragma once

#include <QStringListModel>
#include <string>
#include <vector>

namespace tessary {

/// False, and nothing is changed, where the entries are the same; a list keeps its place then.
bool SetEntries(QStringListModel& model, const std::vector<std::string>& entries);

}  // namespace tessary
