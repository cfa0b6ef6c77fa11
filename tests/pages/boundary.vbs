' What a page sees of the boundary: names, defaults, write-back, errors, and the classes' names.
Option Explicit
On Error Resume Next

Dim logger, functions, folder, name, value, stamp, repeat

Sub Show(label)
  WScript.Echo label & ": " & Err.Number & " " & Err.Source & ": " & Err.Description
  Err.Clear
End Sub

folder = WScript.Arguments(0) & "\boundary\"
Set logger = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
Set functions = CreateObject("quendal_reports_asp.functions")
Show "created"
WScript.Echo TypeName(logger) & " " & TypeName(functions) & " " & TypeName(logger.OSInfo)
WScript.Echo TypeName(functions.JSON) & " " & TypeName(functions.Concat) & " " & _
  TypeName(functions.STRINGS) & " " & TypeName(functions.ARRAYS) & " " & _
  TypeName(functions.Dictionaries) & " " & TypeName(functions.OS)

For Each name In Array("JSON", "VersionInfo")
  Set value = Nothing
  Set value = CreateObject("QUENDAL_REPORTS_ASP." & name)
  WScript.Echo name & " created by itself: " & (Not value Is Nothing)
  Err.Clear
Next

logger.WriteLog 2, "nowhere to write"
Show "no file"
logger.NoSuchMember
Show "no member"
logger.WriteLog
Show "no arguments"
logger.WriteLog "abc", "x"
Show "no number"
logger.SetLogPath Null
Show "Null"

logger.SetLogPath folder
logger.SetLogFile "BOUNDARY.TXT"
repeat = -7
value = logger.wRiTeLoG(2, "text", repeat, stamp)
Show "written"
WScript.Echo "repeat: " & repeat & " " & TypeName(repeat)
WScript.Echo "stamp: " & (Len(stamp) > 30) & " " & (value = stamp & "text")
repeat = "2"
value = logger.WriteLog(2, "text", repeat)
WScript.Echo "unchanged repeat: " & TypeName(repeat)
value = logger.WriteLog(2, , , stamp)
WScript.Echo "omitted: " & (value = stamp)
logger.IsASP = True
Show "read-only"
