#!/usr/bin/env python3
# Breaks the code in small ways, one at a time, and runs the whole suite on
# each: every break must make a test fail. The breaks are the faults the
# tests are there to catch, listed in scripts/mutations.txt as
#   FILE | TEXT | REPLACEMENT | the fault
# with \N for a line break and \x7c for a bar; <nothing> deletes the text.
# Use a build folder of its own; the sources are put back after each break.
#   scripts/mutate.py SOURCE_DIR BUILD_DIR [ROW...]
import re, subprocess, sys, os, time
root = sys.argv[1]; build = sys.argv[2]
only = sys.argv[3:] 
rows = []
for line in open(os.path.join(os.path.dirname(os.path.abspath(__file__)), 'mutations.txt')):
    line = line.rstrip('\n')
    if not line or line.startswith('#'): continue
    parts = line.split(' | ')
    if len(parts) != 4: print('BAD ROW', line); continue
    f, old, new, why = parts
    old = old.replace('\\N', '\n').replace('\\x7c', '|'); new = '' if new == '<nothing>' else new.replace('\\N', '\n').replace('\\x7c', '|')
    rows.append((f, old, new, why))
results = []
for i, (f, old, new, why) in enumerate(rows):
    if only and str(i) not in only: continue
    path = os.path.join(root, f)
    src = open(path).read()
    n = src.count(old)
    if n == 0:
        print(f'{i:3} NOT FOUND  {f}: {why}', flush=True); results.append((i, 'notfound', why)); continue
    open(path, 'w').write(src.replace(old, new, 1))
    try:
        b = subprocess.run(['cmake', '--build', build, '-j2'], capture_output=True, text=True)
        if b.returncode != 0:
            status = 'nobuild'
        else:
            t = subprocess.run(['ctest', '--test-dir', build, '-j2', '--timeout', '120'], capture_output=True, text=True,
                               env=dict(os.environ, QT_QPA_PLATFORM='offscreen'))
            failed = re.findall(r'\d+ - (\S+)', t.stdout)
            status = 'caught' if t.returncode != 0 else 'MISSED'
            if status == 'caught': status += ' by ' + ', '.join(sorted(set(x.split('.')[0] + '.' + x.split('.')[1][:40] if '.' in x else x for x in failed))[:3])
    finally:
        open(path, 'w').write(src)
    print(f'{i:3} {status}  {f}: {why}', flush=True)
    results.append((i, status, why))
subprocess.run(['cmake', '--build', build, '-j2'], capture_output=True)
caught = sum(1 for r in results if r[1].startswith('caught'))
tried = sum(1 for r in results if r[1].startswith('caught') or r[1] == 'MISSED')
print(f'caught {caught} of {tried} mutations ({len(results)-tried} not applicable)')
