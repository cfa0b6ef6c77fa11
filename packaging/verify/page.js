// What verify.cmd runs in JScript. Beside it is what it must print.
var functions = new ActiveXObject("QUENDAL_REPORTS_ASP.FUNCTIONS");
var order = functions.JSON.Decode('{"id": 7, "paid": null}');
order.Add("total", 3.5);
WScript.Echo(functions.JSON.Encode(order));
WScript.Echo(functions.STRINGS.PadLeft("7", "0", 3));
WScript.Echo(functions.Max(3, 7, 5));

// No folder is set, so that nothing is written.
var logger = new ActiveXObject("QUENDAL_REPORTS_ASP.LOGGING");
logger.SetLogFile("VERIFY.TXT");
WScript.Echo(logger.LogLevel + " " + logger.FileName);

try {
  functions.JSON.Decode("[1, 2");
} catch (error) {
  WScript.Echo((error.number & 0xFFFF) + " " + error.description);
}
