@echo off
rem try.cmd [PORT]
rem Runs the example site with the page host, on this machine only, from the DLL beside the host:
rem nothing is registered and nothing stays but the logs of the pages.
setlocal
set "here=%~dp0"
set port=%~1
if not defined port set port=8080
echo The example site, at http://127.0.0.1:%port%/ for this machine only.
echo It needs 64-bit Windows and its script engines, VBScript and JScript. Nothing is registered.
echo The pages' logs are in "%here%examples\site\LOGS", so this folder must be writable.
echo It ends with Ctrl+C or when this window is closed. "%~n0 PORT" takes another port.
echo.
rem The browser comes a moment later than the host.
start "" /min cmd /c "ping -n 3 127.0.0.1 >nul & start http://127.0.0.1:%port%/"
"%here%x64\asp_host.exe" serve "%here%examples\site" --port %port%
if errorlevel 1 echo The page host did not run. Is port %port% in use?
