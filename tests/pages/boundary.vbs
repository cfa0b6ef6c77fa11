' What a page sees of the boundary: the classes' names, errors, write-back, and its own code that
' runs during a call.
Option Explicit
On Error Resume Next

Dim logger, functions, name, value, stamp, repeat, variable

' A default value that runs a step of the page.
Class Step
  Public name
  Public Default Property Get Value
    If name = "clear" Then Set variable = Nothing
    If name = "let go" Then Set logger = Nothing
    Value = "e"
  End Property
End Class

Function Runs(name)
  Set Runs = New Step
  Runs.name = name
End Function

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
Set variable = Runs("nothing")
value = logger.WriteParam(2, Runs("clear"), variable)
WScript.Echo CStr(variable Is Nothing) & " " & (Right(value, 2) = " e")
value = logger.WriteParam(2, Runs("let go"), "held")
WScript.Echo CStr(logger Is Nothing) & " " & (Right(value, 5) = " held")
