@echo off
rem Converts the logs that are dropped on this file in the Explorer, one after the other, with the orbconv.exe
rem beside it; the files come to stand beside each log. The window stays if something went wrong.
rem Options of orbconv, such as -rv 4.01, stand in the next line, ahead of its last quotation mark.
set "options="

rem The Explorer puts quotation marks around names with blanks alone, so that cmd ends the arguments at a & and would
rem run the rest as a command. What it was called with stands whole in cmdcmdline, this file first; a drop ends with
rem cmd itself, ahead of that rest. Called by a command prompt or another file, the arguments are taken.
setlocal EnableDelayedExpansion
set "called=!cmdcmdline!"

rem From here on a name stays as it is: no sign of exclamation is taken for anything, and what can hold a & or a ^
rem stands in quotation marks. Those around names give way to question marks, which no name holds.
setlocal DisableDelayedExpansion
set arguments=%*
if defined arguments set "arguments=%arguments:"=?%"
if defined called set "called=%cmdcmdline:"=?%"
if defined called if "%called:~-1%"=="?" set "called=%called:~0,-1%"

set "names=#%called%"
set "names=%names:*/c ??=?%"
set "dropped="
call :takeName
for %%n in ("%name%") do if /i "%%~nxn"=="%~nx0" set "dropped=yes"
if not defined dropped set "names=%arguments%"

set "status=0"
call :takeName
if not defined name goto none
:convert
echo "%name%"
"%~dp0orbconv.exe" -f "%name%" %options%
set "ended=%errorlevel%"
echo.
if "%ended%"=="0" goto next
set "status=1"
echo "%name%" was not converted: status %ended%.
echo.
:next
call :takeName
if defined name goto convert
if "%status%"=="0" goto leave
echo Not every log was converted: see above.
goto stay

:none
set "status=1"
echo Drop logs of the receiver on this file. Their RINEX files come to stand beside them.
:stay
pause

:leave
if defined dropped exit %status%
exit /b %status%

rem Takes the first name from the names: up to a blank, or from a question mark to the next.
:takeName
set "name="
:blank
if not defined names exit /b
set "end= "
if not "%names:~0,1%"==" " goto begin
set "names=%names:~1%"
goto blank
:begin
if not "%names:~0,1%"=="?" goto letter
set "end=?"
set "names=%names:~1%"
:letter
if not defined names exit /b
set "letter=%names:~0,1%"
set "names=%names:~1%"
if "%letter%"=="%end%" exit /b
set "name=%name%%letter%"
goto letter
