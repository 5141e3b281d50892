#pragma once

#include "VxlanController/VxlanControllerCliModel.h"
#include "outfmt/Printer.h"

namespace VxlanController::Cli {

/// Prints the rows of an ARP table. The two tables differ only in their rows, so the code that
/// walks them takes one of these renderers.
class ArpTableRenderer {
public:
    ArpTableRenderer(ArpTableRenderer const &) = delete;
    ArpTableRenderer & operator=(ArpTableRenderer const &) = delete;
    virtual ~ArpTableRenderer();

    /// Prints the row of `entry`, which is in the table of `vni`. Raises what the printer
    /// raises.
    virtual void renderIpToMac(Vex::Ptr<VxlanArpEntry const> const & entry,
                               Vex::String const & vni) = 0;

protected:
    explicit ArpTableRenderer(outfmt::Printer & printer) : printer_(printer) {}

    outfmt::Printer & printer() const noexcept { return printer_; }

private:
    outfmt::Printer & printer_;
};

/// The rows of the advertised table.
class AdvertisedArpTableRenderer final : public ArpTableRenderer {
public:
    explicit AdvertisedArpTableRenderer(outfmt::Printer & printer) : ArpTableRenderer(printer) {}

    void renderIpToMac(Vex::Ptr<VxlanArpEntry const> const & entry,
                       Vex::String const & vni) override;
};

/// The rows of the received table, for one switch.
class ReceivedArpTableRenderer final : public ArpTableRenderer {
public:
    ReceivedArpTableRenderer(outfmt::Printer & printer, Vex::String switchId)
        : ArpTableRenderer(printer), switchId_(std::move(switchId)) {}

    void renderIpToMac(Vex::Ptr<VxlanArpEntry const> const & entry,
                       Vex::String const & vni) override;

private:
    Vex::String const switchId_;
};

} // namespace VxlanController::Cli
