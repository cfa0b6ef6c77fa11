@echo off
rem unregister.cmd [/user]
rem Takes back every registration of the component, as administrator, or with /user only the
rem current user's. Tells and ends as register.cmd.
call "%~dp0register.cmd" /u %*
