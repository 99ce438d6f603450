alias p paint
