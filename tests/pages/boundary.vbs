' What a page sees of the boundary: the classes' names, errors, and write-back.
Option Explicit
On Error Resume Next

Dim logger, functions, value, stamp, repeat

Sub Show(label)
  WScript.Echo label & ": " & Err.Number & " " & Err.Source & ": " & Err.Description
  Err.Clear
End Sub

Set logger = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
Set functions = CreateObject("quendal_reports_asp.functions")
WScript.Echo TypeName(logger) & " " & TypeName(functions) & " " & TypeName(functions.JSON) & " " & _
  TypeName(functions.Concat) & " " & TypeName(functions.STRINGS) & " " & _
  TypeName(functions.ARRAYS) & " " & TypeName(functions.Dictionaries) & " " & _
  TypeName(functions.OS)
Show "created"

logger.WriteLog 2, "nowhere to write"
Show "no file"
logger.NoSuchMember
Show "no member"
logger.WriteLog
Show "no arguments"
logger.WriteLog "abc", "x"
Show "no number"
logger.IsASP = True
Show "read-only"

logger.SetLogPath WScript.Arguments(0) & "\boundary\"
logger.SetLogFile "BOUNDARY.TXT"
repeat = -7
value = logger.wRiTeLoG(2, "text", repeat, stamp)
WScript.Echo repeat & " " & TypeName(repeat) & " " & (Len(stamp) > 30)
WScript.Echo CStr(value = stamp & "text")
repeat = "2"
value = logger.WriteLog(2, , repeat, stamp)
WScript.Echo TypeName(repeat) & " " & (Right(value, Len(stamp)) = stamp)
