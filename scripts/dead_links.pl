# Usage: perl dead_links.pl [--package] FOLDER FILE...
# Prints links in Markdown files, named below FOLDER, that lead to no file or heading there. With
# --package also the names of files in backticks that FOLDER does not have. Fails when there are any.
use strict;
use warnings;
use File::Basename;

my $package = $ARGV[0] eq '--package' && shift;
my ($folder, @files) = @ARGV;
my $dead = 0;

sub text_of { local (@ARGV, $/) = @_; return scalar <>; }

sub anchors_of {
  my %anchors;
  my $text = text_of(@_);
  $text =~ s/^```.*?^```//gms;
  for my $heading ($text =~ /^#+ +(.*)$/gm) {
    my $anchor = lc $heading;
    $anchor =~ s/[^\w\- ]//g;
    $anchor =~ tr/ /-/;
    $anchors{$anchor} = 1;
  }
  return \%anchors;
}

sub report { print "$_[0]: $_[1]\n"; $dead = 1; }

my %names = map { basename($_) => 1 } split /\n/, `find "$folder" -type f`;
for my $file (@files) {
  my $path = "$folder/$file";
  my $text = text_of($path);
  $text =~ s/^ *```.*?^ *```//gms;
  for my $link ($text =~ /\]\(([^)\s]+)\)/g) {
    next if $link =~ /^[a-z]+:/;
    my ($target, $anchor) = $link =~ /^([^#]*)#?(.*)$/;
    my $found = $target eq '' ? $path : dirname($path) . "/$target";
    report($file, $link) if !-e $found || $anchor ne '' && !anchors_of($found)->{$anchor};
  }
  next unless $package;
  for my $name ($text =~ /`([^`\s]+)`/g) {
    (my $slashed = $name) =~ tr{\\}{/};
    my $isPath = $slashed =~ m{^(x64|x86|docs|examples|verify|src|tools|tests|scripts|packaging)/[\w./]+$};
    my $isFile = $name =~ /^[\w.-]+\.(cmd|md|manifest|asp|idl|sh|h|cpp)$/;
    report($file, $name) if $isPath && !-e "$folder/$slashed" || $isFile && !$names{$name};
  }
}
exit $dead;
