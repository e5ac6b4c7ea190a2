#pragma once

/// Opens the window of the electronic invoices with the accompanying invoice of key `id`, or with those of the period
/// when it is 0 or less.
void mostraFatturaElettronica(int id);
