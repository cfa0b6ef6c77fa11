' What verify.cmd runs in VBScript. Beside it is what it must print.
Option Explicit
Dim functions, logger, order, list, files, folder, stamp, stream, text
Set functions = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set order = functions.JSON.Decode("{""id"": 7, ""lines"": [1.5, 2], ""paid"": null}")
order.Add "total", 3.5
WScript.Echo functions.JSON.Encode(order)
list = Array("pear", "Apple", "fig")
functions.ARRAYS.Sort list
WScript.Echo list(0) & ", " & list(1) & ", " & list(2)
WScript.Echo functions.STRINGS.FormatDateTime(DateSerial(2026, 11, 5), "#WWWW, #D #MMMM #YYYY")
WScript.Echo functions.STRINGS.HTMLEncode("a < b")

' A log of its own, which does not stay.
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.GetSpecialFolder(2) & "\" & functions.STRINGS.UUID
Set logger = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
logger.SetLogPath folder & "\"
logger.SetLogFile "VERIFY.TXT"
logger.WriteLog 2, "An entry", 1, stamp
Set stream = files.OpenTextFile(folder & "\VERIFY.TXT", 1, False, -1)
text = stream.ReadAll
stream.Close
files.DeleteFolder folder
If InStr(text, stamp & "An entry" & vbCrLf) > 0 Then WScript.Echo "logged"

On Error Resume Next
functions.JSON.Decode "[1, 2"
WScript.Echo Err.Number & " " & Err.Description
