#include <filesystem>

#include "dati/SmallBudgets.h"
#include "dati/import/Deviations.h"
#include "dati/import/Import.h"
#include "dati/import/Weights.h"
#include "support/FaultConnection.h"

namespace {

using namespace dati_tests;

/// Files for the small company, whose accounts have 4 levels.
struct Import : SmallBudgets {
  std::filesystem::path folder =
      std::filesystem::path(testing::TempDir()) / ("import" + std::to_string(std::random_device{}()));
  suite::Sessione session{db};
  dati::ImportOptions options;

  Import() { std::filesystem::create_directories(folder); }
  ~Import() override { std::filesystem::remove_all(folder); }

  std::string file(const std::string& text) {
    const auto name = folder / (std::to_string(++files_) + ".csv");
    std::ofstream(name, std::ios::binary) << text;
    return name.string();
  }
  static const dati::FileKind& kind(std::string_view name) {
    return *std::ranges::find(dati::fileKinds(), name, &dati::FileKind::name);
  }
  /// "2: what is wrong; …" of files, each "kind\ntext".
  static std::string told(const dati::Problems& problems) {
    std::string text;
    for (const auto& problem : problems.sorted())
      text += (text.empty() ? "" : "; ") + std::to_string(problem.line) + ": " + problem.text;
    return text;
  }
  std::unique_ptr<dati::Import> reading(const std::vector<std::string>& files,
                                        ado::ConnectionPtr connection = nullptr) {
    auto import = std::make_unique<dati::Import>(
        connection ? connection : db, session, [this]() -> bukorval::CLSKORVAL& { return bo; }, options);
    for (const auto& text : files) {
      const auto end = text.find('\n');
      import->read(kind(text.substr(0, end)), file(text.substr(end + 1)));
    }
    return import;
  }
  std::string problems(const std::vector<std::string>& files) { return told(reading(files)->problems()); }
  /// What was written, or the failure.
  std::string write(const std::vector<std::string>& files) {
    std::string text;
    const auto failure = failureOf([&] { text = shown(reading(files)->write()); });
    return failure.empty() ? text : failure;
  }
  std::string registrations() const {
    return shown(
        list("SELECT CG41_NUMREG, CG41_DATAREG, CG41_ANNO_CG19, CG41_CODICE_CG31, CG42_NUMRIGACONT,"
             " CG42_INDDAAV, CG42_IMPTOTALE FROM CG41_PRIMANOTA INNER JOIN CG42_MOVCONT ON CG42_NUMREG_CG41 ="
             " CG41_NUMREG ORDER BY CG41_NUMREG, CG42_NUMRIGACONT"));
  }

 private:
  int files_ = 0;
};

TEST_F(Import, FindsWhatIsWrongWithAccountsAndSites) {
  EXPECT_EQ(problems({"accounts\ncode,description,nature,total\n5001001,x,cost,0\n60010000,,cost,0\n60010001,x,gain,0\n"
                      "60010001,y,cost,0\n60010002,y,cost,2\n,y,cost,0\n"}),
            "2: account 5001001 has 7 characters, the company's accounts have 8 (1+1+2+4); "
            "3: column description: a value is needed; "
            "4: column nature: 'gain' is not balance, revenue or cost; 5: account 60010001 stands twice; "
            "6: column total: 2 is not between 0 and 1; 7: column code: a value is needed");
  EXPECT_EQ(problems({"sites\ncode,description\n0,x\n100,x\n3,x\n03,y\nx,y\n"}),
            "2: column code: 0 is not between 1 and 99; 3: column code: '100' has more than 2 digits; "
            "5: site 3 stands twice; 6: column code: 'x' is not a whole number");
  EXPECT_EQ(write({"accounts\ncode,description,nature,total\n60010000,Personale,cost,1\n50010001,Merci nuove,,\n",
                   "sites\ncode,description\n2,Bari\n3,Lecce\n"}),
            "2 accounts,2 sites");
  EXPECT_EQ(shown(list("SELECT CG24_CONTO, CG24_DESCR, CG24_INDCONTORICAV, CG24_INDTIPOCONTO FROM CG24_TABPDC WHERE"
                       " CG24_CONTO IN ('60010000', '50010001') ORDER BY CG24_CONTO")),
            "50010001 Merci nuove 0 2,60010000 Personale 2 1");
  EXPECT_EQ(shown(list("SELECT CG31_DESCR FROM CG31_SEDI ORDER BY CG31_CODICE")), "Sede,Bari,Lecce");
}

TEST_F(Import, FindsWhatIsWrongWithMovements) {
  const std::string header =
      "movements\nregistration,date,account,side,amount,site,kind,competence_from,competence_to,"
      "year,adjusting\n";
  EXPECT_EQ(
      problems({header + "1,15/01/2025,50010001,D,10,1,0,,,,\n"  // line 2 is in order
                         "1,16/01/2025,50010001,C,10,,,,,,\n"    // another date
                         "2,15/01/2025,50010009,X,10,,,,,,\n"    //
                         "3,15/01/2025,50010001,,10,9,3,,,,\n"   //
                         "4,15/01/2025,50010001,,10,,,2025-02-02,2025-02-01,,\n"
                         "5,15/01/2030,50010001,,10,,,,,,\n"       //
                         "6,15/01/2026,50010001,,10,,,,,2025,\n"   //
                         "7,15/01/2024,50010001,,10,,,,,2025,1\n"  //
                         "0,15/01/2025,50010001,,10,,,,,,2\n"      //
                         "8,15/01/2025,50010001,,,,,,,,\n"}),
      "3: registration 1 has another date on line 2; 4: no account 50010009; 4: column side: 'X' is not D or C; "
      "5: no site 9; 5: column kind: 3 is not between 0 and 2; 6: competence ends before it begins; "
      "7: no accounting year holds 15/01/2030; 8: the accounting year 2025 does not hold 15/01/2026; "
      "9: the accounting year 2025 neither holds 15/01/2024 nor ends before it; "
      "10: column adjusting: 2 is not between 0 and 1; 10: column registration: 0 is not between 1 and 999999999; "
      "11: column amount: a value is needed");
  EXPECT_EQ(registrations(), "");
}

TEST_F(Import, WritesRegistrationsLineByLine) {
  const std::string header = "movements\nregistration,date,account,side,amount,site,kind,year,adjusting\n";
  EXPECT_EQ(write({header + "7,15/02/2025,50010001,D,10.10,1,,,\n7,,70010001,C,10.10,2,,,\n"}).substr(0, 2), "1 ")
      << "a later line needs its date";
  EXPECT_EQ(write({header + "7,15/02/2025,50010001,D,10.10,1,1,,\n"
                            ",20/02/2025,50010001,,5,,,,\n"
                            "7,15/02/2025,70010001,C,10.10,2,1,,\n"
                            ",15/01/2026,50010001,,3,,,2025,1\n"}),
            "4 movements in 3 registrations");
  EXPECT_EQ(registrations(),
            "7 15/02/2025 2025 1 1 1 10.10,7 15/02/2025 2025 1 2 2 10.10,"
            "8 20/02/2025 2025  1 1 5.00,9 15/01/2026 2025  1 1 3.00");
  EXPECT_EQ(one("SELECT CG41_FLGRETTIF FROM CG41_PRIMANOTA WHERE CG41_NUMREG = 9"), "1");
  EXPECT_EQ(problems({header + "7,15/02/2025,50010001,D,1,,,,\n"}), "2: there is a registration 7 already");
  EXPECT_TRUE(reading({header + "7,15/02/2025,50010001,D,1,,,,\n"})->problems().has(dati::Remedy::Replace));
  options.replace = true;
  EXPECT_EQ(write({header + "7,16/02/2025,50010001,D,1,,,,\n"}), "1 movement in 1 registration, 1 of them replaced");
  EXPECT_EQ(registrations().substr(0, 31), "7 16/02/2025 2025  1 1 1.00,8 2");
}

TEST_F(Import, FindsTheLinesOfARegistrationWhereverTheyStand) {
  const std::string header = "movements\nregistration,date,account,amount,kind\n";
  const auto line = [](const char* number, const char* day, const char* amount, const char* kind = "") {
    return std::string(number) + "," + day + "/02/2025,50010001," + amount + "," + kind + "\n";
  };
  const std::string mixed = header + line("7", "05", "1", "1") + line("9", "06", "2") + line("7", "05", "4") +
                            line("", "08", "8") + line("9", "06", "16", "0") + line("7", "05", "32", "1") +
                            line("8", "07", "64");
  const std::pair<std::string, std::string> wrong[] = {
      // Of the lines that follow their first one, of one that lies apart, of the next behind that.
      {line("1", "05", "1") + line("1", "06", "1"), "3: registration 1 has another date on line 2"},
      {line("1", "05", "1") + line("2", "05", "1") + line("1", "06", "1"),
       "4: registration 1 has another date on line 2"},
      {line("1", "05", "1") + line("2", "05", "1") + line("1", "05", "1") + line("1", "05", "1", "2"),
       "5: registration 1 has another kind on line 2"},
      // Once each, though such a file is looked through twice.
      {line("1", "05", "1") + line("1", "06", "1") + line("2", "05", "1") + line("1", "07", "1"),
       "3: registration 1 has another date on line 2; 5: registration 1 has another date on line 2"},
      {line("1", "05", "1") + line("2", "05", "1") + line("1", "05", "1") + line("2", "06", "1"),
       "5: registration 2 has another date on line 3"},
      {line("1", "05", "1") + line("0", "05", "1") + line("1", "06", "1"),
       "3: column registration: 0 is not between 1 and 999999999; 4: registration 1 has another date on line 2"},
      {line("3", "05", "x") + line("2", "05", "1") + line("3", "06", "1"),
       "2: column amount: 'x' is not a number; 4: registration 3 has another date on line 2"},
      {line("999999999", "05", "1") + line("65536", "05", "1") + line("65535", "05", "1") + line("65536", "05", "1") +
           line("999999999", "06", "1"),
       "6: registration 999999999 has another date on line 2"},
  };
  for (const auto& [lines, expected] : wrong) EXPECT_EQ(problems({header + lines}), expected);
  options.batch = "mixed";
  EXPECT_EQ(write({mixed}), "7 movements in 4 registrations");
  EXPECT_EQ(shown(list("SELECT CG42_NUMREG_CG41, CG42_NUMRIGACONT, CG42_IMPTOTALE FROM CG42_MOVCONT"
                       " ORDER BY CG42_NUMREG_CG41, CG42_NUMRIGACONT")),
            "7 1 1.00,7 2 4.00,7 3 32.00,8 1 64.00,9 1 2.00,9 2 16.00,10 1 8.00");
  EXPECT_EQ(shown(list("SELECT BK02_NUMREG_CG41 FROM BK02_REGIMPORTI ORDER BY BK02_NUMREG_CG41")), "7,8,9,10");
  options.batch.clear();
  EXPECT_EQ(problems({header + line("6", "05", "1") + line("9", "05", "1") + line("6", "05", "1") +
                      line("9", "05", "1") + line("7", "05", "1")}),
            "3: there is a registration 9 already; 6: there is a registration 7 already");
  options.replace = true;
  EXPECT_EQ(write({mixed}), "7 movements in 4 registrations, 3 of them replaced");
}

TEST_F(Import, PutsMovementsIntoTheYearThatHoldsThem) {
  const std::string header = "movements\ndate,account,amount,competence_from,competence_to,year,adjusting\n";
  EXPECT_EQ(problems({header + "30/06/2024,50010001,1,,,,\n01/01/2026,50010001,1,,,,\n15/01/2026,50010001,1,,,,1\n"}),
            "2: no accounting year holds 30/06/2024; 3: no accounting year holds 01/01/2026; "
            "4: no accounting year holds 15/01/2026")
      << "what adjusts a year names it";
  EXPECT_EQ(write({header + "01/07/2024,50010001,1,,,,\n31/12/2024,50010001,2,,,,\n01/01/2025,50010001,3,,,,\n"
                            "31/12/2025,50010001,4,2025-02-01,2025-02-01,,\n30/06/2025,50010001,5,,,2024,\n"}),
            "5 movements in 5 registrations");
  EXPECT_EQ(registrations(),
            "1 01/07/2024 2024  1 1 1.00,2 31/12/2024 2024  1 1 2.00,3 01/01/2025 2025  1 1 3.00,"
            "4 31/12/2025 2025  1 1 4.00,5 30/06/2025 2024  1 1 5.00");
}

TEST_F(Import, KnowsWhatEarlierFilesBring) {
  const std::string movements = "movements\ndate,account,amount,site\n15/01/2025,60010001,1,7\n";
  EXPECT_EQ(problems({movements}), "2: no account 60010001; 2: no site 7");
  EXPECT_EQ(problems({"accounts\ncode,description\n60010001,x\n", "sites\ncode,description\n7,x\n", movements}), "");
  EXPECT_EQ(problems({"accounts\ncode,descr\n60010001,x\n", "sites\ncode,description\n7,x\n", movements}).substr(0, 3),
            "1: ")
      << "of accounts that could not be understood none is missed";
  const auto two = problems({"accounts\ncode,descr\n60010001,x\n", "accounts\ncode,description\n60010002,x\n",
                             "sites\ncode,descr\n7,x\n", "sites\ncode,description\n8,x\n", movements});
  EXPECT_EQ(two.find("no account"), std::string::npos) << two;
  EXPECT_EQ(two.find("no site"), std::string::npos) << two;
}

TEST_F(Import, FillsCardsAndMakesThoseThatAreMissing) {
  const auto a = card("A1");
  detail(a, "0 1 100");
  const std::string header = "values\ncard_kind,card,account,period,kind,amount,quantity1\n";
  EXPECT_EQ(
      write({header + "0,A1,50010001,1,,120.5,\n0,A1,50010001,2,0,,1.5\n0,N1,50010002,4,3,7,\n0,N1,50010002,4,3,8,"
                      "\n"}),
      "4 values, 1 new card");
  EXPECT_EQ(amounts(a, 0), "1:120.50 2:");
  EXPECT_EQ(amounts(a, 0, "BU66_QTA1"), "1: 2:1.500");
  const auto made = std::stoll(one("SELECT BU65_ID FROM BU65_TESBUDGET WHERE BU65_SCHEDA_BU07 = 'N1'"));
  EXPECT_EQ(amounts(made, 3), "1: 2: 3: 4:8.00") << "the last line counts";
  EXPECT_EQ(problems({header + "0,A1,50010009,1,,1,\n2,A1,50010001,5,5,1,\n0,A1,50010001,0,,1.005,\n0,A1,50010001,1,,,"
                               "0.0005\n"}),
            "2: no account 50010009; 3: column period: 5 is not between 1 and 4; "
            "3: column kind: 5 is not between 0 and 4; 3: no card kind 2; "
            "4: column amount: '1.005' has more than 2 decimals; 4: column period: 0 is not between 1 and 4; "
            "5: column quantity1: '0.0005' has more than 3 decimals");
  EXPECT_EQ(write({header + "0,A1,50010001,1,,1,\n,Z1,,1,,1,\n"}),
            "1 BU65_INDCOSRIC_BU07 is needed: the budget is kept by card kind, 0 cost or 1 revenue");
  EXPECT_EQ(amounts(a, 0), "1:120.50 2:") << "all files or none";
}

TEST_F(Import, DefinesBudgetsAndCodes) {
  EXPECT_EQ(problems({"definitions\ntype,subtype,structure,periodicity,per_site\n4,01,CON,0,0\n0,N,AREXXX,6,0\n0,M,ARE"
                      "ARE,0,2\n0,L,AR,0,0\n10,K,ARE,0,0\n0,N,ARE,0,0\n"}),
            "2: budget 4 01 is defined already; 3: column structure: there is no element 'XXX'; "
            "3: column periodicity: 6 is not between 0 and 5; 4: column structure: element ARE stands twice; "
            "4: column per_site: 2 is not between 0 and 1; 5: column structure: codes of three letters are needed; "
            "6: column type: '10' has more than 1 digits; 7: budget 0 N is defined already");
  EXPECT_EQ(problems({"codes\nelement,code,description,parent\nAER,NO,x,\nSED,1,x,\nARE,NORD,x,\nARE,NO,x,X\n"
                      "SFA,1,x,\nCLF,a,x,1\n"}),
            "2: there is no element 'AER'; did you mean ARE?; 3: sites and accounts of the ledger have files of their "
            "own; 4: 'NORD' is longer than 3; 5: codes of element ARE belong to no other; "
            "6: column parent: a code is needed; 7: 'a' is no whole number");
  EXPECT_EQ(write({"codes\nelement,code,description,parent\nare,NO,Nord,\nCLF,77,Rossi,\nCLF,77,Bianchi,1\n",
                   "definitions\ntype,subtype,structure,from_january,forecasts\n0,N,ARECLF,0,3\n"}),
            "3 codes,1 budget definition");
  EXPECT_EQ(shown(list("SELECT CG44_TIPOCF, CG44_RAGSOC FROM CG44_CLIFOR ORDER BY CG44_TIPOCF")), "0 Rossi,1 Bianchi");
  EXPECT_EQ(one("SELECT BU01_STRUTTURA, BU01_INDPERFISO, BU01_INDPERIODO, BU01_NUMFORECAST FROM BU01_ANABUDGET WHERE"
                " BU01_INDTIPO = 0"),
            "ARECLF 0 0 3");
  EXPECT_EQ(write({"definitions\ntype,subtype,structure\n0,M,ARE\n"}), "1 budget definition");
  EXPECT_EQ(one("SELECT BU01_INDPERFISO, BU01_INDPERIODO, BU01_NUMFORECAST, BU01_FLGSEDI FROM BU01_ANABUDGET WHERE"
                " BU01_SOTTOTIPO = 'M'"),
            "1 0 0 0")
      << "by months from January, when nothing is said";
}

TEST_F(Import, WritesAllOrNothingWhereverItFails) {
  card("A1");
  const std::vector<std::string> files = {"accounts\ncode,description\n60010001,x\n", "sites\ncode,description\n7,x\n",
                                          "movements\ndate,account,amount\n15/01/2025,60010001,1\n",
                                          "values\ncard_kind,card,account,period,amount\n0,N1,60010001,1,5\n"};
  const auto state = [&] {
    std::string text;
    for (const char* table : {"CG24_TABPDC", "CG31_SEDI", "CG41_PRIMANOTA", "CG42_MOVCONT", "BU65_TESBUDGET",
                              "BU66_DETBUDGET", "BK01_IMPORTI", "BK02_REGIMPORTI"})
      text += one("SELECT COUNT(*) FROM " + std::string(table)) + " ";
    return text;
  };
  const auto before = state();
  options.batch = "primo";
  const auto broken = std::make_shared<testing_support::FaultConnection>(db);
  int faults = 0;
  for (bool failed = true; failed && faults < 200; ++faults) {
    broken->failAt = 0;
    const auto import = reading(files, broken);
    EXPECT_EQ(told(import->problems()), "");
    bo.Connessione(broken);
    broken->calls = 0;
    broken->failAt = faults + 1;
    failed = false;
    try {
      import->write();
    } catch (const std::exception&) {
      failed = true;
      EXPECT_EQ(state(), before) << "statement " << faults + 1;
    }
  }
  EXPECT_GT(faults, 20);
  EXPECT_EQ(state(), "4 3 1 1 2 16 1 1 ");
}

TEST_F(Import, AsksOnceMoreBeforeItWrites) {
  const auto import = reading({"sites\ncode,description\n7,x\n"});
  EXPECT_EQ(failureOf([&] { import->write([] { throw dati::Refused("closed"); });
}), "1 closed");
EXPECT_EQ(one("SELECT COUNT(*) FROM CG31_SEDI"), "2");
EXPECT_EQ(failureOf([&] { reading({"sites\ncode,description\n0,x\n"})->write(); }),
          "1 The files have problems, nothing was imported");
EXPECT_EQ(shown(import->write()), "1 site");
}

struct Batches : Import {
  std::string batches() {
    std::string text;
    for (const auto& batch : dati::Batches(*db, 1).all())
      text += shown(std::vector<Variant>{batch.name, batch.kind, batch.rows, batch.registrations}) + "; ";
    return text;
  }
  std::string movements(const char* number) {
    return "movements\nregistration,date,account,amount\n" + std::string(number) + ",15/01/2025,50010001,1\n" +
           std::string(number) + ",15/01/2025,50010001,2\n";
  }
};

TEST_F(Batches, KeepWhatCameTogetherUntilItIsRemoved) {
  db->Execute("DROP TABLE BK02_REGIMPORTI");
  db->Execute("DROP TABLE BK01_IMPORTI");
  EXPECT_EQ(batches(), "");
  options.batch = "gennaio";
  EXPECT_EQ(write({movements("1")}), "2 movements in 1 registration");
  EXPECT_EQ(write({movements("2")}), "1 There is an import with the name gennaio");
  options.batch = "febbraio";
  const auto meanwhile = reading({movements("3")});
  EXPECT_EQ(write({movements("2")}), "2 movements in 1 registration");
  EXPECT_EQ(failureOf([&] { meanwhile->write(); }), "1 There is an import with the name febbraio");
  EXPECT_EQ(batches(), "gennaio,movements,2,1; febbraio,movements,2,1; ");
  options.batch = "";
  options.replace = true;
  EXPECT_EQ(write({movements("1")}), "2 movements in 1 registration, 1 of them replaced");
  EXPECT_EQ(batches(), "gennaio,movements,2,0; febbraio,movements,2,1; ") << "replaced, it is the import's no longer";
  dati::Batches all(*db, 1);
  EXPECT_EQ(all.registrationsOf("FEBBRAIO"), 1);
  EXPECT_EQ(failureOf([&] { dati::Batches(*db, 2).remove("gennaio"); }), "1 There is no import with the name gennaio");
  all.remove("gennaio");
  EXPECT_EQ(one("SELECT COUNT(*) FROM CG42_MOVCONT"), "4");
  all.remove("febbraio");
  EXPECT_EQ(one("SELECT COUNT(*) FROM CG42_MOVCONT WHERE CG42_NUMREG_CG41 = 2"), "0");
  EXPECT_EQ(shown(list("SELECT CG41_NUMREG FROM CG41_PRIMANOTA")), "1");
  EXPECT_EQ(batches(), "");
  EXPECT_EQ(failureOf([&] { all.registrationsOf("febbraio"); }), "1 There is no import with the name febbraio");
}

TEST_F(Batches, AreRemovedWholeOrNotAtAll) {
  options.batch = "gennaio";
  write({movements("1")});
  testing_support::FaultConnection broken(db);
  for (int k = 2; k <= 7; ++k) {
    dati::Batches all(broken, 1);
    all.prepare();
    broken.calls = 0;
    broken.failAt = k;
    EXPECT_NE(errorOf([&] { all.remove("gennaio"); }), "") << k;
    EXPECT_EQ(batches() + one("SELECT COUNT(*) FROM CG42_MOVCONT"), "gennaio,movements,2,1; 2") << k;
  }
}

TEST_F(Import, ReadsWeightsOfPeriods) {
  const auto weights = [&](const std::string& text) {
    dati::Problems problems;
    const auto read = dati::readWeights(file(text), 4, problems);
    return problems.count() == 0 ? shown(read) : told(problems);
  };
  EXPECT_EQ(weights("period,weight\n2,1.5\n4,0\n1,\"1,25\"\n"), "1.25,1.5,0,0");
  EXPECT_EQ(weights("period,weight\n0,1\n5,1\n1,1\n1,2\n2,-1\n3,x\n"),
            "2: the budget has no period 0; 3: the budget has no period 5; 5: period 1 stands twice; "
            "6: a weight is 0 or more, not -1; 7: column weight: 'x' is not a number");
}

TEST_F(Import, ReadsDeviationsOfAccountsAndMonths) {
  dati::Problems problems;
  const auto found = dati::readDeviations(
      file("account,period,percent\n50010001,,10\n50010001,3,-5\n50010002,12,1.5\n70010001,,0\n"), problems);
  EXPECT_EQ(told(problems), "");
  const auto rows = [](ado::Recordset& set, const char* second) {
    std::string text;
    for (set.MoveFirst(); !set.Eof(); set.MoveNext())
      text += shown(std::vector<Variant>{set["CONTO"].Value(), set[second].Value(), set["PERCSCOST"].Value()}) + "; ";
    return text;
  };
  EXPECT_EQ(rows(*found.byAccount, "FLGPERIODI"), "50010001,1,10; 50010002,1,0; 70010001,0,0; ");
  EXPECT_EQ(found.byPeriod->RecordCount(), 13) << "the account's own percentage fills its other months";
  found.byPeriod->Filter("CONTO = '50010001' AND PERIODO >= 2 AND PERIODO <= 4");
  EXPECT_EQ(rows(*found.byPeriod, "PERIODO"), "50010001,2,10; 50010001,3,-5; 50010001,4,10; ");
  dati::readDeviations(file("account,period,percent\n1,,1\n1,,2\n1,13,1\n1,0,1\n1,2,1\n1,2,1\n,1,1\n1,1,\n"), problems);
  EXPECT_EQ(told(problems),
            "3: account 1 stands twice; 4: period 13 is no month from 1 to 12; 5: period 0 is no month from 1 to 12; "
            "7: account 1 stands twice for period 2; 8: column account: a value is needed; "
            "9: column percent: a value is needed");
}

TEST(Problems, KeepTheFirstThousandAndCountAll) {
  dati::Problems problems;
  for (std::size_t line = 5000; line >= 1; --line) problems.add("b.csv", line, "x");
  problems.add("a.csv", 9000, "first file");
  problems.add("b.csv", 1, "y", dati::Remedy::Encoding);
  EXPECT_EQ(problems.count(), 5002U);
  const auto sorted = problems.sorted();
  ASSERT_GE(sorted.size(), 1000U);
  EXPECT_EQ(sorted[0].text, "first file");
  EXPECT_EQ(sorted[1].text + sorted[2].text, "xy") << "of one line in the order in which they were found";
  for (std::size_t i = 3; i < 999; ++i) ASSERT_EQ(sorted[i].line, i - 1);
  EXPECT_TRUE(problems.has(dati::Remedy::Encoding));
  EXPECT_FALSE(problems.has(dati::Remedy::Replace));
}

}  // namespace
