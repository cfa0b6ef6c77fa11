@echo off
rem try.cmd [PORT]
rem Serves the example site with the page host, to this machine only. The host uses the DLL beside it:
rem nothing is registered, and only the logs of the pages remain.
setlocal
set "here=%~dp0"
set port=%~1
if not defined port set port=8080
echo The example site is at http://127.0.0.1:%port%/, for this machine only. Nothing is registered.
echo It needs a 64-bit Windows with its script engines, VBScript and JScript.
echo The pages write their logs to "%here%examples\site\LOGS".
echo Press Ctrl+C or close this window to end it. "%~n0 PORT" uses another port.
echo.
rem The browser starts a moment later than the host.
start "" /min cmd /c "ping -n 3 127.0.0.1 >nul & start http://127.0.0.1:%port%/"
"%here%x64\asp_host.exe" serve "%here%examples\site" --port %port%
if errorlevel 1 echo The page host did not run. Is port %port% in use?
