"""MailSink.py FOLDER: a mail server for one mail, and a program FOLDER/sendmail that delivers to it:
the real agent msmtp with settings of its own.

Prints a line once it is ready; then whom the mail went to, and in a second line its headers, the
text's lines and the enclosure's name, as a library not ours reads them. The enclosure itself is in
FOLDER/enclosure."""
import email
import email.policy
import os
import socket
import sys

folder = sys.argv[1]


def write(name, text, mode):
    with open(os.open(f'{folder}/{name}', os.O_WRONLY | os.O_CREAT, mode), 'wb') as file:
        file.write(text)


def receive(lines):
    mail, is_data = b'', False
    lines.write(b'220 ready\r\n')
    for line in lines:
        if is_data and line != b'.\r\n':
            mail += line[line.startswith(b'..'):]
            continue
        is_data = line == b'DATA\r\n'
        lines.write(b'354 go on\r\n' if is_data else b'250 ok\r\n')
        if line.startswith(b'RCPT'):
            print(line.decode().strip())
        if line == b'QUIT\r\n':
            return email.message_from_bytes(mail, policy=email.policy.default)


server = socket.create_server(('127.0.0.1', 0))
server.settimeout(100)
port = server.getsockname()[1]
write('settings', f'account default\nhost 127.0.0.1\nport {port}\nfrom me@tarvex.example\n'
      'tls off\nauth off\n'.encode(), 0o600)
write('sendmail', f'#!/bin/sh\nexec /usr/bin/msmtp -C "{folder}/settings" "$@"\n'.encode(), 0o755)
print('ready', flush=True)
message = receive(server.accept()[0].makefile('rwb', 0))
text, enclosure = message.iter_parts()
write('enclosure', enclosure.get_content(), 0o644)
print(message['to'], message['subject'], message['from'], bool(message['date']),
      text.get_content().strip().splitlines(), enclosure.get_filename(),
      enclosure.get_content_disposition())
