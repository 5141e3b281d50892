#include "tests/live/Database.h"

std::unique_ptr<OvsdbLab> Database::lab;
std::unique_ptr<Folder> Database::folder;
std::string Database::fabric;

void Database::SetUpTestSuite() {
    if (missingFor(Lab::database)) {
        return;
    }
    lab = std::make_unique<OvsdbLab>();
    lab->fillSmall();
    lab->vtepCtl({"add-ucast-local", "red", "00:00:5e:00:53:0a", "10.0.0.12", "--",
                  "add-ucast-remote", "red", "00:00:5E:00:53:1D", "10.1.0.4", "--",
                  "add-mcast-remote", "green", "unknown-dst", "10.1.0.2", "--", "add-mcast-remote",
                  "green", "unknown-dst", "10.1.0.9"});
    folder = std::make_unique<Folder>();
    FabricText text;
    text.database("rack1", lab->remote(),
                  "[source.system_ids]\nleaf1 = '00:1c:73:00:00:01'\nleaf2 = '001c.7300.0002'");
    fabric = folder->write("fabric.toml", text.text());
}

void Database::TearDownTestSuite() {
    folder.reset();
    lab.reset();
}

void Database::SetUp() {
    VXSHOW_NEEDS_LAB(Lab::database);
}

std::string Database::listing(Words const & words) const {
    return shown(Words{"--fabric", fabric} + words);
}
