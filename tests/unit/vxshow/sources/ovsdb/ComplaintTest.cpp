#include "vxshow/sources/ovsdb/Complaint.h"

#include <gtest/gtest.h>

/// The texts are those of ovsdb-client 3.1 with OpenSSL 3.0.
namespace vxshow::test {

using sources::ovsdb::complaintOf;

TEST(OvsdbComplaint, NamesWhyTlsFailed) {
    EXPECT_EQ(complaintOf("2026-11-23T00:04:14Z|00001|stream_ssl|WARN|SSL_connect: "
                          "error:0A000086:SSL routines::certificate "
                          "verify failed\n"
                          "ovsdb-client: failed to connect to \"ssl:127.0.0.1:6640\" (Protocol "
                          "error)\n",
                          "ssl:127.0.0.1:6640"),
              "unreachable: failed to connect to \"ssl:127.0.0.1:6640\" (Protocol error): "
              "certificate verify failed");
    EXPECT_EQ(complaintOf("2026-11-23T00:04:14Z|00001|stream_ssl|WARN|SSL_read: error:0A000415:SSL "
                          "routines::sslv3 alert "
                          "certificate expired\n"
                          "2026-11-23T00:04:14Z|00001|jsonrpc|WARN|ssl:127.0.0.1:6640: receive "
                          "error: Protocol error\n"
                          "ovsdb-client: transaction failed (Protocol error)\n",
                          "ssl:127.0.0.1:6640"),
              "broken answer: transaction failed (Protocol error): SSL_read: sslv3 alert "
              "certificate expired");
    EXPECT_EQ(
        complaintOf(
            "2026-11-23T00:04:14Z|00001|stream_ssl|WARN|SSL_use_PrivateKey_file: "
            "error:80000002:system "
            "library::No such file or directory\n"
            "2026-11-23T00:04:14Z|00001|stream_ssl|WARN|Private key must be configured to use SSL\n"
            "ovsdb-client: failed to connect to \"ssl:leaf:6640\" (Protocol not "
            "available)\n",
            "ssl:leaf:6640"),
        "unreachable: failed to connect to \"ssl:leaf:6640\" (Protocol not available): "
        "SSL_use_PrivateKey_file: No such file or directory");
    EXPECT_EQ(
        complaintOf(
            "2026-11-23T00:04:14Z|00001|stream_ssl|WARN|SSL_write: system error (Broken pipe)\n"
            "ovsdb-client: transaction failed (Broken pipe)\n",
            "ssl:leaf:6640"),
        "broken answer: transaction failed (Broken pipe): SSL_write: system error (Broken "
        "pipe)");
}

TEST(OvsdbComplaint, AsksWhetherAPortWithoutTlsIsTcp) {
    for (std::string const cause : {"wrong version number", "unexpected eof while reading"}) {
        EXPECT_EQ(complaintOf("2026-11-23T00:04:14Z|00001|stream_ssl|WARN|SSL_connect: "
                              "error:0A00010B:SSL routines::" +
                                  cause +
                                  "\novsdb-client: failed to connect to \"ssl:leaf\" (Protocol "
                                  "error)\n",
                              "ssl:leaf"),
                  "unreachable: failed to connect to \"ssl:leaf\" (Protocol error): " + cause +
                      ": is this port tcp:?");
    }
}

TEST(OvsdbComplaint, NamesAnUnknownHost) {
    constexpr auto errors = "2026-11-23T00:04:14Z|00001|stream_tcp|WARN|tcp:nowhere.invalid:6640: "
                            "connect: Address family not "
                            "supported by protocol\n"
                            "ovsdb-client: failed to connect or listen to "
                            "\"tcp:nowhere.invalid:6640\" (Address family not supported by "
                            "protocol)\n";
    EXPECT_EQ(complaintOf(errors, "tcp:nowhere.invalid:6640"),
              "unreachable: no such host: nowhere.invalid");
    EXPECT_EQ(complaintOf(errors, "ssl:nowhere.invalid"),
              "unreachable: no such host: nowhere.invalid");
    for (auto const * const address : {"tcp:10.0.0.1:6640", "tcp:[2001:db8::1]:6640", "unix:/db"}) {
        EXPECT_TRUE(complaintOf(errors, address).starts_with("unreachable: failed to connect"))
            << address;
    }
}

TEST(OvsdbComplaint, IgnoresTheRestOfTheLog) {
    EXPECT_EQ(complaintOf("2026-11-23T00:04:14Z|00001|reconnect|WARN|a warning\n", "unix:/db"), "");
    EXPECT_EQ(
        complaintOf("ovsdb-client: first\n2026-11-23T00:04:14Z|00001|jsonrpc|WARN|a warning\n",
                    "unix:/db"),
        "broken answer: first");
}

TEST(OvsdbComplaint, IsPrintable) {
    EXPECT_EQ(
        complaintOf("2026-11-23T00:04:14Z|00001|stream_ssl|WARN|\x1b[2J\novsdb-client: \x1b[2J\n",
                    "unix:/db"),
        "broken answer: \\x1b[2J: \\x1b[2J");
}

} // namespace vxshow::test
