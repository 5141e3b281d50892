#pragma once

#include "vxshow/sources/Access.h"
#include "vxshow/sources/frr/VtyshCommand.h"

#include <utility>

namespace vxshow::sources::frr {

/// A VTEP that runs FRR, as a source.
class VtyshAccess final : public Access {
public:
    /// `expectsEvpn`: whether it is a failure that EVPN is not active there.
    explicit VtyshAccess(VtyshCommand command, bool expectsEvpn = true)
        : command_(std::move(command)), expectsEvpn_(expectsEvpn) {}

    VtyshCommand const & command() const noexcept { return command_; }

    bool expectsEvpn() const noexcept { return expectsEvpn_; }

    Answer ask(Source const & source, state::Selection const & selection,
               Deadline const & deadline) const override;

    state::Counters counters() const noexcept override { return {.preference = false}; }

private:
    VtyshCommand command_;
    bool expectsEvpn_;
};

} // namespace vxshow::sources::frr
