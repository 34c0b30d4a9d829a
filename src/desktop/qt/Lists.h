// The entries of lists.
#pragma once

#include <QStringListModel>
#include <string>
#include <vector>

namespace tessary {

/// Changes nothing where the entries are the same; a list keeps its place then.
void SetEntries(QStringListModel& model, const std::vector<std::string>& entries);

}  // namespace tessary
