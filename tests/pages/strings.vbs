' Calls every member of ClsString as a VBScript page does. The argument is a folder to write in.
Option Explicit
Dim functions, strings, fileSystem, folder, file, stream, text, number, day

Set functions = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set strings = functions.STRINGS
WScript.Echo TypeName(strings)

day = DateSerial(2005, 3, 5) + TimeSerial(14, 7, 9)
WScript.Echo strings.FormatDateTime(day, "#WWWW, #DD #MMMM #YYYY #HH24:#NN:#SS")
WScript.Echo strings.FormatDateTime(day, "#UWWW #UMMM #UNTH #H12:#NN #AMPM")
WScript.Echo strings.FormatDateTime("2005-03-05", "#M/#D/#YY")
WScript.Echo strings.FormatDateTime("not a date", "#YYYY")
WScript.Echo strings.FormatDateTime(45000, "#YYYY #WWWW")
WScript.Echo strings.FormatDateTime(day, Null)
number = 12
text = strings.FormatDateTime(day, number)
WScript.Echo text & " " & TypeName(number)

WScript.Echo strings.NumberToWords(1005)
WScript.Echo strings.NumberToWords("1,234")
WScript.Echo strings.NumberToWords(12.5)
WScript.Echo strings.NumberToWords("abc")
WScript.Echo TypeName(strings.NumberToWords(Null))

WScript.Echo strings.HTMLEncode("a<b & ""c""" & vbTab & Chr(233))
WScript.Echo TypeName(strings.HTMLEncode(Null))
WScript.Echo strings.URLEncode("a b&c-" & vbTab & Chr(128))
WScript.Echo strings.URLDecode("a+b%20c%2d")
WScript.Echo Asc(strings.URLDecode("%80"))
On Error Resume Next
text = strings.URLDecode("100%")
WScript.Echo Err.Number & " " & Err.Description
Err.Clear
text = strings.URLEncode(Null)
WScript.Echo Err.Number & " " & Err.Description
Err.Clear
text = strings.MD5(Null)
WScript.Echo Err.Number & " " & Err.Description
Err.Clear
On Error Goto 0
WScript.Echo strings.SafeSQLString("O'Brien &#38; &#39;x&#39;")
WScript.Echo strings.SafeFileName("my file's name.txt")
WScript.Echo strings.MD5("abc")
WScript.Echo CStr(strings.MD5(123) = strings.MD5("123"))
text = strings.UUID
WScript.Echo Len(text) & " " & Mid(text, 9, 1) & Mid(text, 24, 1)
WScript.Echo CStr(text <> strings.UUID())

WScript.Echo strings.IsTimeOnly("14:30") & " " & strings.IsTimeOnly("2005-03-05 14:30")
WScript.Echo strings.IsDateOnly("2005-03-05") & " " & strings.IsDateOnly("abc")
WScript.Echo strings.Capitalize("  hello  WORLD")
WScript.Echo strings.PadLeft("7", "0", 3) & " " & strings.PadLeft("abcdef", "0", 4)
WScript.Echo strings.PadRight("ab", "*", 5)
WScript.Echo strings.ExtractFileName("C:\dir\file.txt")
WScript.Echo strings.ExtractFilePath("C:\dir\file.txt")
WScript.Echo strings.FormatFileSize(1023, False) & ", " & strings.FormatFileSize(1536, True)

Set fileSystem = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(0)
file = folder & "\strings-vbs.txt"
Set stream = fileSystem.CreateTextFile(file, True)
stream.Write "one"
stream.Close
WScript.Echo strings.AppendToUTF8File(file, ", two") & " " & strings.AppendToUTF8File(file, Chr(233))
WScript.Echo fileSystem.GetFile(file).Size
WScript.Echo fileSystem.OpenTextFile(file).Read(8)
fileSystem.DeleteFile file
WScript.Echo strings.AppendToUTF8File(file, "none") & " " & fileSystem.FileExists(file)
