// What verify.cmd asks in each bitness, in that bitness' script host:
//   verify.js registration BITNESS             is the component registered, and can it be loaded?
//   verify.js page BITNESS LANGUAGE PRINTED EXPECTED   did the page print what it must?
// Prints what the maintainer has to know, and ends with a status for verify.cmd.
var WORKS = 0, FAULT = 1, NOT_REGISTERED = 10, ONLY_NAMES = 11;
var CLASSES = ["QUENDAL_REPORTS_ASP.LOGGING", "QUENDAL_REPORTS_ASP.FUNCTIONS"];
var MACHINES = { x64: 0x8664, x86: 0x014C };
var UTF16 = -1, READ = 1;
var AGAIN = "Run register.cmd as administrator where the DLL is, or repair the installation.";

var shell = new ActiveXObject("WScript.Shell");
var files = new ActiveXObject("Scripting.FileSystemObject");
var bitness = WScript.Arguments(1);

function say(text) { WScript.Echo(bitness + ": " + text); }

function fault(culprit, text, advice) {
  say("FAILED: the " + culprit + " is at fault. " + text);
  WScript.Echo("  " + advice);
  WScript.Quit(FAULT);
}

// The text value of a key as this bitness sees it, or an empty text.
function registered(key) {
  try { return shell.RegRead("HKCR\\" + key); } catch (none) { return ""; }
}

function hexadecimal(code) { return "0x" + (code >>> 0).toString(16).toUpperCase(); }

// The processor that a DLL is for, as its header tells; 0 for a file that is none.
function machineOf(path) {
  try {
    var stream = files.OpenTextFile(path, READ, false, UTF16);
    var header = stream.Read(2048);
    stream.Close();
    var start = header.charCodeAt(30) / 2;
    return header.charCodeAt(start) == 0x4550 ? header.charCodeAt(start + 2) : 0;
  } catch (unreadable) {
    return 0;
  }
}

function checkFile(path) {
  if (!files.FileExists(path))
    fault("registration", "It names a DLL that is not there (0x8007007E): " + path, AGAIN);
  var machine = machineOf(path);
  if (machine != MACHINES[bitness])
    fault("library", "This is no " + bitness + " DLL (0x8007000B): " + path,
          machine ? "It is the one of the other bitness. Put the DLL from the package's folder " +
                    bitness + " there."
                  : "It is damaged, or you may not read it. Put the DLL from the package there.");
}

function checkRegistration() {
  var path = "", classes = 0, names = 0;
  for (var i = 0; i < CLASSES.length; i++) {
    var id = registered(CLASSES[i] + "\\CLSID\\");
    if (id) names++;
    var server = id && registered("CLSID\\" + id + "\\InprocServer32\\");
    if (!server) continue;
    classes++;
    path = server;
  }
  if (classes == 0) {
    say("not registered");
    WScript.Quit(names ? ONLY_NAMES : NOT_REGISTERED);
  }
  if (classes < CLASSES.length)
    fault("registration", "One of the two classes is missing.", AGAIN);
  checkFile(path);
  for (i = 0; i < CLASSES.length; i++) {
    try {
      WScript.CreateObject(CLASSES[i]);
    } catch (error) {
      fault("library", CLASSES[i] + " cannot be created, " + hexadecimal(error.number) + ": " + path,
            "0x80070005: this account may not read the DLL. Otherwise unpack the package again.");
    }
  }
  say(path + ", version " + files.GetFileVersion(path));
}

function linesOf(path) {
  var stream = files.OpenTextFile(path, READ);
  var text = stream.AtEndOfStream ? "" : stream.ReadAll();
  stream.Close();
  return text.replace(/\r/g, "").replace(/\n+$/, "").split("\n");
}

function checkPage(language, printedPath, expectedPath) {
  var printed = linesOf(printedPath), expected = linesOf(expectedPath);
  for (var i = 0; i < Math.max(printed.length, expected.length); i++) {
    if (printed[i] === expected[i]) continue;
    fault("library", "The " + language + " page printed in line " + (i + 1) + ":\r\n    " +
                     (i < printed.length ? printed[i] : "(nothing)") + "\r\n  instead of\r\n    " +
                     (i < expected.length ? expected[i] : "(nothing)"),
          "The registration is in order, so report these lines with the version above.");
  }
  say(language + " works");
}

if (WScript.Arguments(0) == "registration") checkRegistration();
else checkPage(WScript.Arguments(2), WScript.Arguments(3), WScript.Arguments(4));
WScript.Quit(WORKS);
