#pragma once

#include "vxshow/sources/Access.h"
#include "vxshow/sources/frr/VtyshCommand.h"

#include <utility>

namespace vxshow::sources::frr {

/// A VTEP that runs FRR, as a source.
class VtyshAccess final : public Access {
public:
    explicit VtyshAccess(VtyshCommand command) : command_(std::move(command)) {}

    VtyshCommand const & command() const noexcept { return command_; }

    Answer ask(Source const & source, state::Selection const & selection,
               Deadline const & deadline) const override;

private:
    VtyshCommand command_;
};

} // namespace vxshow::sources::frr
