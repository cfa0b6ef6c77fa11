' What a page asks of the library, against what its author would write without it. Prints rows
' "name|ours|peer" in microseconds of one unit of work. The argument is a folder for its files.
Option Explicit
Const VALUES = 10000
Const ROUNDS = 3

Dim folder, logger, functions, strings, files, dictionary, numbers, texts, sorted, markup
folder = WScript.Arguments(0)
Set logger = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
Set functions = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set strings = functions.STRINGS
Set files = CreateObject("Scripting.FileSystemObject")
Set dictionary = CreateObject("Scripting.Dictionary")
If files.FolderExists(folder) Then files.DeleteFolder folder
logger.SetLogPath folder & "\"
logger.SetLogFile "LOG.TXT"
markup = "<td class=""name"">J" & Chr(246) & "rg & sons, 12 > 7</td> and some plain words behind it."
MakeValues

Row "a property (Scripting.Dictionary's)", "our property", "peer property"
Row "an append (s = s & piece)", "our append", "peer append"
Row "a log entry (FileSystemObject)", "our entry", "peer entry"
Row "sort of 10,000 numbers (a quicksort)", "our numbers", "peer numbers"
Row "sort of 10,000 texts (a quicksort)", "our texts", "peer texts"
Row "HTMLEncode of 80 characters (a loop)", "our markup", "peer markup"
Row "URLEncode of 80 characters (a loop)", "our query", "peer query"

' The best round of each side; they run in turns.
Sub Row(name, ours, peer)
  Dim i, ourBest, peerBest
  ourBest = 1000
  peerBest = 1000
  For i = 1 To ROUNDS
    ourBest = Least(ourBest, Seconds(ours))
    peerBest = Least(peerBest, Seconds(peer))
  Next
  WScript.Echo name & "|" & ourBest * 1000000 & "|" & peerBest * 1000000
End Sub

Function Least(a, b)
  Least = a
  If b < a Then Least = b
End Function

' Of one unit of work. The clock has milliseconds, so that quick work is repeated more often.
Function Seconds(work)
  Dim i, count, file, value, start
  count = 500
  If work = "our property" Or work = "peer property" Then count = 20000
  If work = "our append" Or work = "peer append" Then count = 20000
  If work = "our markup" Or work = "our query" Then count = 20000
  If work = "our numbers" Or work = "our texts" Then count = 20
  If work = "peer numbers" Or work = "peer texts" Then count = 1
  value = ""
  start = Timer
  Select Case work
    Case "our property"
      For i = 1 To count
        value = logger.LogLevel
      Next
    Case "peer property"
      For i = 1 To count
        value = dictionary.Count
      Next
    Case "our append"
      Set value = functions.Concat
      For i = 1 To count
        value.Append "piece " & i
      Next
      value = value.Value
    Case "peer append"
      For i = 1 To count
        value = value & "piece " & i
      Next
    Case "our entry"
      For i = 1 To count
        logger.WriteLog 2, "The total of report 7 was computed in 12 steps."
      Next
    Case "peer entry"
      For i = 1 To count
        Set file = files.OpenTextFile(folder & "\PEER.TXT", 8, True, -1)
        file.WriteLine Now & " DEFAULT.ASP The total of report 7 was computed in 12 steps."
        file.Close
      Next
    Case "our numbers"
      For i = 1 To count
        sorted = numbers
        functions.ARRAYS.Sort sorted
      Next
    Case "peer numbers"
      sorted = numbers
      QuickSort sorted, 0, VALUES - 1
    Case "our texts"
      For i = 1 To count
        sorted = texts
        functions.ARRAYS.Sort sorted
      Next
    Case "peer texts"
      sorted = texts
      QuickSort sorted, 0, VALUES - 1
    Case "our markup"
      For i = 1 To count
        value = strings.HTMLEncode(markup)
      Next
    Case "peer markup"
      For i = 1 To count
        value = MarkupByHand(markup)
      Next
    Case "our query"
      For i = 1 To count
        value = strings.URLEncode(markup)
      Next
    Case "peer query"
      For i = 1 To count
        value = QueryByHand(markup)
      Next
  End Select
  Seconds = (Timer - start) / count
End Function

Sub MakeValues
  Dim i, j, number
  ReDim numbers(VALUES - 1)
  ReDim texts(VALUES - 1)
  number = 12345
  For i = 0 To VALUES - 1
    For j = 1 To 10
      number = (number * 421 + 1663) Mod 7875
      texts(i) = texts(i) & Chr(97 + number Mod 26)
    Next
    numbers(i) = number * 1000 + i Mod 1000
  Next
End Sub

Sub QuickSort(list, first, last)
  Dim low, high, middle, kept
  low = first
  high = last
  middle = list((first + last) \ 2)
  Do While low <= high
    Do While list(low) < middle
      low = low + 1
    Loop
    Do While list(high) > middle
      high = high - 1
    Loop
    If low <= high Then
      kept = list(low)
      list(low) = list(high)
      list(high) = kept
      low = low + 1
      high = high - 1
    End If
  Loop
  If first < high Then QuickSort list, first, high
  If low < last Then QuickSort list, low, last
End Sub

Function MarkupByHand(text)
  Dim i, unit, result
  For i = 1 To Len(text)
    unit = Mid(text, i, 1)
    Select Case unit
      Case "<"
        unit = "&lt;"
      Case ">"
        unit = "&gt;"
      Case "&"
        unit = "&amp;"
      Case """"
        unit = "&quot;"
      Case Else
        If Asc(unit) > 127 Then unit = "&#" & Asc(unit) & ";"
    End Select
    result = result & unit
  Next
  MarkupByHand = result
End Function

Function QueryByHand(text)
  Dim i, unit, code, result
  For i = 1 To Len(text)
    unit = Mid(text, i, 1)
    code = Asc(unit)
    If unit = " " Then
      unit = "+"
    ElseIf code < 48 Or (code > 57 And code < 65) Or (code > 90 And code < 97) Or code > 122 Then
      unit = "%" & Hex(code)
    End If
    result = result & unit
  Next
  QueryByHand = result
End Function
