// The accounts of the network, collected server by server.
#pragma once

#include "platform/Accounts.h"

#include <functional>
#include <string>
#include <vector>

namespace sitekeeper {

/// Asks every server, and this computer last, for its user accounts and hands each server's non-empty names to `take`
/// when they are all there, in the order in which they came. A failure in the middle of a server ends that server only,
/// with what it gave so far.
void CollectUsers(const Accounts& accounts, const std::function<void(const std::vector<std::wstring>&)>& take);

} // namespace sitekeeper
