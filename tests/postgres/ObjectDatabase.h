#pragma once

#include "postgres/Databases.h"

/// Where the tests of the whole object keep the demo company: on a server, which has one to copy (see CMakeLists.txt).
namespace object_tests {

struct Database : postgres_tests::TemporaryDatabase {
  Database() : TemporaryDatabase("bk_demo") {}
};

/// Sees every commit that changed something: each statement that writes leaves a mark, which others see when it stays.
class CommitWatch {
 public:
  explicit CommitWatch(const Database& database) : server_(postgres_tests::rawServer(database.name())) {
    postgres::runSimple(server_.get(), R"(
      CREATE TABLE IF NOT EXISTS public.watch (x int);
      CREATE OR REPLACE FUNCTION public.watch() RETURNS trigger LANGUAGE plpgsql AS
        'BEGIN INSERT INTO public.watch VALUES (1); RETURN NULL; END';
      DO $$ DECLARE t text; BEGIN
        FOR t IN SELECT relname FROM pg_class WHERE relkind = 'r' AND relname LIKE 'b___\_%' ESCAPE '\' LOOP
          EXECUTE format('CREATE OR REPLACE TRIGGER watch AFTER INSERT OR UPDATE OR DELETE ON %I EXECUTE FUNCTION watch()', t);
        END LOOP; END $$)");
  }
  /// A number that stays the same as long as nobody else commits a change.
  int version() const {
    const auto count = postgres::runSimple(server_.get(), "SELECT count(*) FROM public.watch");
    return std::stoi(std::string(postgres::cell(count.get(), 0, 0)));
  }

 private:
  postgres::Server server_;
};

}  // namespace object_tests
