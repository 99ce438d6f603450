// Starts quillet-lsp for quillet definition files. Colours come from the
// server's semantic tokens, so the extension carries no grammar.
const vscode = require('vscode');
const { LanguageClient } = require('vscode-languageclient/node');

let client;

function activate(context) {
  const settings = vscode.workspace.getConfiguration('quillet');
  client = new LanguageClient(
    'quillet',
    'quillet-lsp',
    { command: settings.get('server'), args: ['--stdio'] },
    {
      documentSelector: [{ language: 'quillet' }],
      initializationOptions: { aliases: settings.get('aliases') },
      synchronize: { configurationSection: 'quillet' },
    });
  context.subscriptions.push(client);
  return client.start();
}

function deactivate() {
  return client ? client.stop() : undefined;
}

module.exports = { activate, deactivate };
