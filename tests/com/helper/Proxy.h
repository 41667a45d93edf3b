#pragma once

#include "com/Com.h"

namespace com_helper {

/// An object that can be reached by its dispatch interface and by nothing else, as one of somebody else's; so are the
/// objects that it gives.
com::Ref<IDispatch> proxyOf(com::Ref<IDispatch> object);

}  // namespace com_helper
