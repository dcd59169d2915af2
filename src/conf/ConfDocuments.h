#pragma once

#include <memory>

#include "docmodel/Document.h"

namespace quenmar {

/// The trees of one configuration file in its two versions, in the order that every operation uses.
/// They are shared: one operation sees what another has changed.
struct ConfDocuments {
  std::shared_ptr<Document> distribution;        ///< the distribution's settings
  std::shared_ptr<Document> server;              ///< the server's settings
  std::shared_ptr<Document> distributionSeries;  ///< the distribution's series entries
  std::shared_ptr<Document> serverSeries;        ///< the server's series entries
};

}  // namespace quenmar
