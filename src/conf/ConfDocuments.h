#pragma once

#include <memory>

#include "docmodel/Document.h"

namespace quenmar {

/// The trees of one configuration file in its two versions, in the order that every operation uses.
/// They are shared: one operation sees what another has changed.
struct ConfDocuments {
  std::shared_ptr<Document> distribution;
  std::shared_ptr<Document> server;
  std::shared_ptr<Document> distributionSeries;
  std::shared_ptr<Document> serverSeries;
};

}  // namespace quenmar
