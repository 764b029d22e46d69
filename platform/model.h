// What models of several kinds have in common: they are ended through this base.
//
// Defined here whole, since the libraries that derive from it are separate ones.
#pragma once

#include "platform/visibility.h"

namespace zol::model {

class ZOL_PLATFORM IModel {
public:
    virtual ~IModel() = default;

protected:
    IModel() = default;
    IModel(const IModel&) = default;
    IModel& operator=(const IModel&) = default;
};

}  // namespace zol::model
