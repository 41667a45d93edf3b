#!/usr/bin/env python3
"""The same companies on a PostgreSQL server.

    postgres_check.py PROGRAM SEED... [--jobs N]    with POSTGRES=STATE of tests/postgres/cluster
"""

import csv
import datetime
import io
import os
import subprocess
import sys
from decimal import Decimal

from check import Check, main
from company import Company
from rules import TABLES, columns, connect, scale_of

SERVER = open(os.environ["POSTGRES"], encoding="utf-8").read()
MARK = "-- end of a table --"


def psql(database, text):
    done = subprocess.run(["psql", "-qXAt", "-v", "ON_ERROR_STOP=1", "-h", SERVER, "-U", "bukorval", database], input=text,
                          capture_output=True, text=True, check=False)
    if done.returncode:
        raise RuntimeError(done.stderr)
    return done.stdout


def literal(value):
    if value is None:
        return "NULL"
    return str(value) if isinstance(value, (int, Decimal)) else "'" + str(value).replace("'", "''") + "'"


def from_text(value, declared):
    if value == "\\N":
        return None
    if declared == "INTDATETIME":
        return datetime.date.fromisoformat(value[:10])
    scale = scale_of(declared)
    if scale:
        return Decimal(value)
    return value.rstrip(" ") if "CHAR" in declared else int(value)


class PostgresCheck(Check):
    types = None

    def connection(self, database):
        return f"Provider=PostgreSQL;Host={SERVER};User=bukorval;Database={database}"

    def make(self, template):
        """A copy of a database that the first company of this process makes with an empty company in it."""
        model, self.database = f"oracle_{os.getpid()}", f"oracle_{os.getpid()}_{self.seed}"
        if PostgresCheck.types is None:
            db = connect(template)
            PostgresCheck.types = {table: columns(db, table) for table in TABLES}
            db.close()
            psql("postgres", f"CREATE DATABASE {model}")
            subprocess.run([self.program, "create", "--name", "Oracle", "-y", "2024", "--connection", self.connection(model)], check=True,
                           stdout=subprocess.DEVNULL)
        psql("postgres", f"CREATE DATABASE {self.database} TEMPLATE {model}")
        self.where = ["--connection", self.connection(self.database)]
        company = Company(self.seed)
        lines = ["BEGIN;", "DELETE FROM CG19_ANADITTAESER;", f"UPDATE CG18_ANADITTE SET CG18_STRUTTCONTI = {company.structure};"]
        for table, rows in company.rows.items():
            for row in rows:
                lines.append(f"INSERT INTO {table} ({','.join(row)}) VALUES ({','.join(map(literal, row.values()))});")
        lines += [f"SELECT setval('bu65_tesbudget_bu65_id_seq', {company.card_id});", "COMMIT;", "ANALYZE;"]
        psql(self.database, "\n".join(lines))

    def tables(self):
        text = "".join(f"COPY (SELECT {','.join(types)} FROM {table} ORDER BY 1, 2, 3) TO STDOUT (FORMAT csv, NULL '\\N');\n\\echo {MARK}\n"
                       for table, types in self.types.items())
        answers = psql(self.database, text).split(MARK + "\n")
        return {table: [{n: from_text(v, d) for (n, d), v in zip(types.items(), row)} for row in csv.reader(io.StringIO(answer))]
                for (table, types), answer in zip(self.types.items(), answers)}

    def end(self):
        psql("postgres", f"DROP DATABASE {self.database} WITH (FORCE)")


if __name__ == "__main__":
    sys.exit(main(PostgresCheck))
