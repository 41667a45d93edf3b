// The same object from the other script language, which has no decimals: names in Unicode, errors as exceptions.
var connection = new ActiveXObject("BUKORVAL.Connection");
connection.Open("Provider=SQLite;Data Source=" + WScript.Arguments.Item(0));
var session = new ActiveXObject("BUKORVAL.Session");
session.Open(connection);
var budget = new ActiveXObject("BUKORVAL.CLSKORVAL");
budget.Connessione = connection;
budget.ActiveInterface = session;
budget.TipoBudget = 4;
budget.SottoTipoBudget = "01";
budget.AnnoEsercizio = 2025;
budget.ProgressivoEsercizio = 1;
budget.CodiceSede = 1;
budget.BdgTipoScheda = 1;
var grid = budget.RecordSetBudget();
for (; !grid.EOF; grid.MoveNext())
  WScript.Echo(budget.RTrimN(grid("BU65_SCHEDA_BU07").Value) + " " + grid.Fields("BU65_SCHEDA_BU07_DESCR").DefinedSize);
var padded = budget.BFill("perch\u00e9 \u20ac", 12);
WScript.Echo(padded.length + " " + padded.charCodeAt(5) + " " + padded.charCodeAt(7));
WScript.Echo(budget.GetDescrizionePeriodo(1, 0, 1, 12, 2025, 1) + ", " + budget.GetDes_BdgSiNo(1).charCodeAt(1));
try {
  grid("NONE");
} catch (error) {
  WScript.Echo((error.number & 0xffff) + " " + error.description);
}
WScript.Echo("end");
