// Calls every member of ClsString as a JScript page does. The argument is a folder to write in.
var strings = new ActiveXObject("QUENDAL_REPORTS_ASP.FUNCTIONS").STRINGS;
function echo(value) { WScript.Echo(String(value)); }

echo(strings.FormatDateTime("2005-03-05 14:07:09", "#WWWW, #DD #MMMM #YYYY #HH:#NN:#SS"));
echo(strings.FormatDateTime("3/5/2005 2:07 PM", "#UMMMM #LNTH #HH12:#NN #AMPM"));
echo(strings.FormatDateTime("never", "#YYYY"));
echo(strings.FormatDateTime(45000, "#WWWW #YYYY-#MM-#DD"));

echo(strings.NumberToWords(2147483647));
echo(strings.NumberToWords(123.45));
echo(strings.NumberToWords(3000000000));
echo(strings.HTMLEncode("<\u00e9'=>"));
echo(typeof strings.HTMLEncode(null));
echo(strings.URLEncode("\u00e9 \n"));
echo(strings.URLDecode("%41%4a+%e9").charCodeAt(3));
try {
  strings.URLDecode("%4");
  echo("no error");
} catch (error) {
  echo((error.number & 0xFFFF) + " " + error.description);
}
echo(strings.SafeSQLString("it's"));
echo(strings.SafeFileName("a/b c.txt"));
echo(strings.MD5(""));
echo(/^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$/.test(strings.UUID()));
echo(strings.IsTimeOnly("2:30 PM") + " " + strings.IsDateOnly("March 5, 2005"));
echo(strings.Capitalize("one TWO"));
echo(strings.PadLeft(7, 0, 3) + " " + strings.PadRight("a", "", 3) + "|");
echo(strings.ExtractFileName("x\\y") + " " + strings.ExtractFilePath("x\\y"));
echo(strings.FormatFileSize(1073741824, false) + " " + strings.FormatFileSize(10240, 1));

var fileSystem = new ActiveXObject("Scripting.FileSystemObject");
var file = WScript.Arguments(0) + "\\strings-js.txt";
fileSystem.CreateTextFile(file, true).Close();
echo(strings.AppendToUTF8File(file, "\u20ac") + " " + fileSystem.GetFile(file).Size);
fileSystem.DeleteFile(file);
echo(strings.AppendToUTF8File(file, "none"));
